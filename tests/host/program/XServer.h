// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "PanelProcess.h"

#include <QColor>
#include <QImage>
#include <QStandardPaths>
#include <QtEndian>

/// An X server without a screen, for as long as it lives.
class XServer : public QProcess
{
public:
    static bool isInstalled() { return !QStandardPaths::findExecutable("Xvfb").isEmpty(); }

    explicit XServer(const QString& size = "1024x600", int dpi = 96)
    {
        start("Xvfb", {"-displayfd", "1", "-noreset", "-screen", "0", size + "x24", "-dpi",
                       QString::number(dpi), "-fbdir", m_folder.path()});
    }
    ~XServer() override { stop(); }

    /// Empty when it does not start.
    QString display()
    {
        while (!canReadLine() && waitForReadyRead(PanelProcess::kPatience)) {
        }
        const QByteArray number = readLine().trimmed();
        m_display = number.isEmpty() ? QString() : ":" + QString::fromLatin1(number);
        return m_display;
    }

    void stop()
    {
        terminate();
        waitForFinished(PanelProcess::kPatience);
    }

    /// What the screen shows; null before it shows anything.
    QImage picture() const
    {
        QFile file(m_folder.filePath("Xvfb_screen0")); // An X window dump.
        if (!file.open(QIODevice::ReadOnly)) {
            return {};
        }
        const QByteArray dump = file.readAll();
        const auto field = [&dump](int index) {
            return qFromBigEndian<int>(dump.data() + 4 * index);
        };
        const int pixels = field(0) + 12 * field(19); // After the header and the colours.
        return QImage(reinterpret_cast<const uchar*>(dump.constData()) + pixels, field(4), field(5),
                      field(12), QImage::Format_RGB32)
            .copy();
    }
    QColor pixel(int x, int y) const { return picture().pixelColor(x, y); }

    /// What one of the programs of the X server's own prints, as xdotool and xset do.
    QString run(const QString& program, const QStringList& options)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DISPLAY", m_display);
        process.setProcessEnvironment(environment);
        process.start(program, options);
        process.waitForFinished(PanelProcess::kPatience);
        return QString::fromLocal8Bit(process.readAllStandardOutput());
    }

private:
    QTemporaryDir m_folder;
    QString m_display;
};

/// The drivers and the bus behind a display keep memory to the end, in libraries that are gone by
/// the time a sanitizer would name them.
inline void setDisplay(PanelProcess& panel, const QString& display)
{
    panel.takeDisplayAway();
    panel.setEnvironment("DISPLAY", display);
    panel.setEnvironment("ASAN_OPTIONS", "detect_leaks=0");
}
