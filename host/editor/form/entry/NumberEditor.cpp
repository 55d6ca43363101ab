// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/form/entry/NumberEditor.h"

#include "norvo/NumpadDialog.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QWheelEvent>

#include <cmath>
#include <limits>

namespace norvo {

namespace {

constexpr int kDigits = 12; ///< That a step leaves of a number.
constexpr int kWheelStep = 120;

/// The power of ten that leaves a number at least ten steps above 0.
double stepOf(double number, bool isWhole)
{
    const double size = qMax(std::abs(number), 1.0) / 10;
    const double step = std::pow(10, std::floor(std::log10(size) + 1e-9));
    return isWhole ? qMax(step, 1.0) : step;
}

} // namespace

NumberEditor::NumberEditor(const ParamWords& words) : LineEditor(words), m_words(words)
{
    const auto key = [this](const QString& text, const QString& what, const char* name, int steps) {
        QPushButton* const made = addKey(text, what);
        made->setObjectName(m_words.name + name);
        made->setAutoRepeat(true);
        connect(made, &QPushButton::clicked, this, [this, steps] { step(steps); });
    };
    key(QString(QChar(0x2212)), tr("%1: less").arg(words.name), " less", -1);
    key("+", tr("%1: more").arg(words.name), " more", 1);
    line().setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    line().installEventFilter(this);
}

double NumberEditor::number() const
{
    const QString text = line().text().isEmpty() ? shownText() : line().text();
    const double number = text.trimmed().toDouble();
    return std::isfinite(number) ? number : 0;
}

void NumberEditor::step(int steps)
{
    const bool isWhole = m_words.kind == ParamKind::WholeNumber;
    const double now = number();
    const double size = stepOf(now, isWhole);
    double next = (std::round(now / size) + steps) * size;
    if (m_words.min) {
        next = qMax(next, *m_words.min);
    }
    if (m_words.max) {
        next = qMin(next, *m_words.max);
    }
    if (m_words.above && next <= *m_words.above) {
        return;
    }
    const QString text = QString::number(next, 'g', kDigits);
    if (text != line().text()) {
        line().setText(text);
        emit stepped();
    }
}

bool NumberEditor::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            step(key == Qt::Key_Up ? 1 : -1);
            return true;
        }
    } else if (event->type() == QEvent::Wheel && line().hasFocus()) {
        const int turned = static_cast<QWheelEvent*>(event)->angleDelta().y();
        step(turned > 0 ? qMax(1, turned / kWheelStep) : qMin(-1, turned / kWheelStep));
        return true;
    }
    return LineEditor::eventFilter(watched, event);
}

QString NumberEditor::askOnScreen()
{
    if (!m_words.also.isEmpty()) {
        return LineEditor::askOnScreen();
    }
    const bool isWhole = m_words.kind == ParamKind::WholeNumber;
    constexpr int decimals = 6;
    const double least =
        m_words.min.value_or(m_words.above.value_or(std::numeric_limits<double>::lowest()));
    const QString name = m_words.unit.isEmpty() ? m_words.name : m_words.name + ", " + m_words.unit;
    bool ok = false;
    const double asked =
        NumpadDialog::getDouble(window(), m_words.name, name, number(), least,
                                m_words.max.value_or(std::numeric_limits<double>::max()),
                                isWhole ? 0 : decimals, &ok, {}, stepOf(number(), isWhole));
    return ok ? QString::number(asked, 'g', kDigits) : QString();
}

} // namespace norvo
