// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <QtTest>

#include <functional>

/// Uses the next modal dialog as `use` says, once it is on view, and closes it if `use` left it
/// open: a test that fails inside must not hang. Lives until the dialog's exec() has returned.
class ModalDialog
{
public:
    explicit ModalDialog(std::function<void(QWidget&)> use) : m_use(std::move(use))
    {
        m_timer.callOnTimeout([this] {
            QWidget* const dialog = QApplication::activeModalWidget();
            if (!dialog || !dialog->isVisible()) {
                return;
            }
            m_timer.stop();
            ++m_count;
            const QPointer<QWidget> guard(dialog);
            m_use(*dialog);
            if (guard && guard->isVisible()) {
                guard->close();
            }
        });
        m_timer.start(0);
    }

    int count() const { return m_count; } ///< 1 once the dialog has been used.

private:
    std::function<void(QWidget&)> m_use;
    QTimer m_timer;
    int m_count = 0;
};

/// A finger on the key of that object name. Fails the test when there is none on view.
inline void tap(QWidget& dialog, const QString& key)
{
    auto* const widget = dialog.findChild<QWidget*>(key);
    QVERIFY2(widget && widget->isVisible(), qPrintable("no key " + key));
    QTest::mouseClick(widget, Qt::LeftButton);
}
