#pragma once

#include "host/panel/file/Fault.h"

#include <QWidget>

namespace norvo {

/// What a panel that cannot start shows instead of itself: every fault with its place, as text that
/// can be selected and copied.
class FaultsPage : public QWidget
{
    Q_OBJECT

public:
    explicit FaultsPage(const Faults& faults, QWidget* parent = nullptr);
};

} // namespace norvo
