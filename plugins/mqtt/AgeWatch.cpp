// SPDX-License-Identifier: LGPL-3.0-or-later

#include "plugins/mqtt/AgeWatch.h"

#include <algorithm>
#include <utility>

namespace norvo {

bool AgeWatch::isNeeded() const
{
    return std::any_of(m_things.begin(), m_things.end(),
                       [](const Thing& thing) { return thing.max.count() > 0; });
}

bool AgeWatch::isAnyOld() const
{
    return std::any_of(m_things.begin(), m_things.end(),
                       [](const Thing& thing) { return thing.isOld; });
}

void AgeWatch::restart(Time now)
{
    for (Thing& thing : m_things) {
        thing.heard = now;
    }
}

bool AgeWatch::hear(int thing, Time now)
{
    Thing& heard = m_things[std::size_t(thing)];
    heard.heard = now;
    return std::exchange(heard.isOld, false);
}

std::vector<int> AgeWatch::findOld(Time now)
{
    std::vector<int> found;
    for (std::size_t i = 0; i < m_things.size(); ++i) {
        Thing& thing = m_things[i];
        if (thing.max.count() > 0 && !thing.isOld && now - thing.heard >= thing.max) {
            thing.isOld = true;
            found.push_back(int(i));
        }
    }
    return found;
}

} // namespace norvo
