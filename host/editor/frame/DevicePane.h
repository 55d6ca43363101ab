// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTabWidget>

namespace norvo {

class EditSession;

/// The settings of the selected device, and beside them its outputs and inputs where its author
/// names them.
class DevicePane : public QTabWidget
{
    Q_OBJECT

public:
    DevicePane(EditSession& session, QWidget* parent);

signals:
    void problem(const QString& text);

private:
    void follow();

    EditSession& m_session;
};

} // namespace norvo
