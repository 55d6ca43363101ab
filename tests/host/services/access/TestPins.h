// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/services/AccessSetting.h"

/// PINs with hashes that are cheap to check.
namespace pins {

const QString kOperate = QStringLiteral("1234");
const QString kOperateHash = QStringLiteral("$argon2id$v=19$m=8,t=1,p=1$VmBmqKgb9Ozl3xqq5WGthA$"
                                            "czBf3Sv4vKrrg2UQUBj2TQoXMMcIosX4iuLoSOWUIfo");
const QString kEngineer = QStringLiteral("987654");
const QString kEngineerHash = QStringLiteral("$argon2id$v=19$m=8,t=1,p=1$0EhteQCBRnTtkLjVdWJazg$"
                                             "GgOOJwqOoCCqWJQ8hgzo5YuWEVgCl4xgLdKMcTsuKP0");

inline norvo::PanelAccess both()
{
    norvo::PanelAccess access;
    access.pins = {{norvo::Role::Operate, kOperateHash}, {norvo::Role::Engineer, kEngineerHash}};
    access.place = {1, 1};
    return access;
}

} // namespace pins
