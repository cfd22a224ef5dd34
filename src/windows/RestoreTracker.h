#pragma once

#include "base/Hash.h"
#include "base/Rect.h"
#include "base/ThreadChecker.h"

#include <algorithm>
#include <cassert>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <unordered_map>
#include <utility>

namespace velmorand {

/// Remembers, for each window, the frame to return to and the frame the program last gave it. Nothing is kept
/// beyond the process. Main thread only.
/// @tparam Key identifies a window within its application; hashable.
template <typename Key>
class RestoreTracker {
public:
    using Date = std::chrono::system_clock::time_point;

    struct Entry {
        Rect restoreFrame;      ///< where restore puts the window
        Rect lastAppliedFrame;  ///< the frame the program last gave the window
        Date updatedAt;         ///< when the entry was last written

        bool operator==(const Entry&) const = default;
    };

    /// `lifetime`: how long an entry lives after its last update. `now`: the clock.
    RestoreTracker(std::chrono::duration<double> lifetime, std::function<Date()> now)
        : lifetime_(std::chrono::duration_cast<Date::duration>(lifetime)), now_(std::move(now)) {}

    RestoreTracker(const RestoreTracker&) = delete;
    RestoreTracker& operator=(const RestoreTracker&) = delete;
    ~RestoreTracker() = default;

    /// The frame to return to, also of an entry that has expired but was not pruned yet.
    [[nodiscard]] std::optional<Rect> restoreFrame(std::int32_t pid, const Key& key) const {
        assert(thread_.isCurrent());
        const auto found = entries_.find({pid, key});
        return found == entries_.end() ? std::nullopt : std::optional(found->second.restoreFrame);
    }

    [[nodiscard]] std::optional<Entry> entry(std::int32_t pid, const Key& key) const {
        assert(thread_.isCurrent());
        const auto found = entries_.find({pid, key});
        return found == entries_.end() ? std::nullopt : std::optional(found->second);
    }

    /// Stores the entry; an absent one removes the window.
    void setEntry(std::int32_t pid, const Key& key, std::optional<Entry> entry) {
        assert(thread_.isCurrent());
        if (entry)
            entries_.insert_or_assign({pid, key}, *entry);
        else
            entries_.erase({pid, key});
    }

    /// Whether any window of this application has an entry, expired or not.
    [[nodiscard]] bool hasEntry(std::int32_t pid) const {
        assert(thread_.isCurrent());
        return std::ranges::any_of(entries_, [pid](const auto& item) { return item.first.pid == pid; });
    }

    /// Drops every entry of this application.
    void forget(std::int32_t pid) {
        assert(thread_.isCurrent());
        std::erase_if(entries_, [pid](const auto& item) { return item.first.pid == pid; });
    }

    /// Drops the entries that were not updated within the lifetime and, of the others, those whose window is not
    /// alive. `isAlive` (Key to bool) is not asked about expired entries.
    template <typename LivenessTest>
    void prune(const LivenessTest& isAlive) {
        assert(thread_.isCurrent());
        const Date cutoff = now_() - lifetime_;
        std::erase_if(entries_,
                      [&](const auto& item) { return !(item.second.updatedAt > cutoff && isAlive(item.first.key)); });
    }

private:
    struct Identity {
        std::int32_t pid;
        Key key;

        bool operator==(const Identity&) const = default;
    };

    struct IdentityHash {
        std::size_t operator()(const Identity& identity) const {
            std::size_t seed = 0;
            hashCombine(seed, identity.pid);
            hashCombine(seed, identity.key);
            return seed;
        }
    };

    std::unordered_map<Identity, Entry, IdentityHash> entries_;
    Date::duration lifetime_;
    std::function<Date()> now_;
    ThreadChecker thread_;
};

}  // namespace velmorand
