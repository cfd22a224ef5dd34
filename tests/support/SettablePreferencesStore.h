#pragma once

#include "platform/simulated/SimulatedPlatform.h"
#include "preferences/PreferencesStore.h"

#include <utility>

namespace velmorand {

/// A preferences store on a simulated platform, whose record a test can change as a whole and in one publication.
/// Nothing of such a change is stored.
class SettablePreferencesStore final : public PreferencesStore {
public:
    explicit SettablePreferencesStore(SimulatedPlatform& platform)
        : PreferencesStore(platform.userDefaults(), platform.runLoop(), platform.log()) {}

    template <typename Change>
    void modify(Change&& change) {
        publishedState().modify(std::forward<Change>(change));
    }
};

}  // namespace velmorand
