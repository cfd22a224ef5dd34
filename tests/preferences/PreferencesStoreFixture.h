#pragma once

#include "platform/simulated/SimulatedPlatform.h"
#include "preferences/PreferencesStateCoding.h"
#include "preferences/PreferencesStore.h"
#include "support/Printing.h"
#include "support/SimulatedPrinting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmorand {

/// A store on a simulated platform, which can be started again as with the next run of the program.
class PreferencesStoreFixture : public testing::Test {
protected:
    static constexpr std::chrono::milliseconds saveDelay{250};
    static constexpr std::chrono::milliseconds nearlyTheDelay{249};

    [[nodiscard]] SimulatedUserDefaults& userDefaults() { return platform.userDefaults(); }
    void advance(Duration span) { platform.runLoop().advance(span); }

    /// Puts a document where the store looks for it and starts the store.
    void startWith(std::string_view document) {
        userDefaults().put(PreferencesStore::key, document);
        restart();
    }
    /// Nothing that waits to be stored survives it.
    void restart() {
        store.reset();
        store = makeStore();
    }

    /// How many times something was stored.
    [[nodiscard]] std::size_t writeCount() { return userDefaults().writes().size(); }
    /// The document in the user defaults; absent when nothing is there.
    [[nodiscard]] std::optional<std::string> storedDocument() {
        return userDefaults().data(PreferencesStore::key).value_or(std::nullopt);
    }
    /// The record in the user defaults, which must be there.
    [[nodiscard]] PreferencesState storedState() { return decodePreferencesState(storedDocument().value()).value(); }

    /// Notes every record that is published from now on.
    void watch() {
        subscription = store->state().subscribe([this](const PreferencesState& state) { published.push_back(state); });
    }

    /// The only line that is logged when loading or storing fails.
    [[nodiscard]] static LogLine errorLine(std::string_view text) {
        return {LogLevel::error, "preferences", std::string(text)};
    }

    SimulatedPlatform platform;
    std::unique_ptr<PreferencesStore> store = makeStore();
    std::vector<PreferencesState> published;
    Subscription subscription;

private:
    [[nodiscard]] std::unique_ptr<PreferencesStore> makeStore() {
        return std::make_unique<PreferencesStore>(platform.userDefaults(), platform.runLoop(), platform.log());
    }
};

}  // namespace velmorand
