#pragma once

#include <QLineEdit>

namespace norvo {

/// The line of a touch dialog that shows what is being entered.
class EntryDisplay : public QLineEdit
{
    Q_OBJECT

public:
    EntryDisplay();

    void setFaulty(bool faulty); ///< Red while what it shows cannot be accepted.

private:
    bool m_isFaulty = false;
};

} // namespace norvo
