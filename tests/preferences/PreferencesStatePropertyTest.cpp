#include "base/UnicodeText.h"
#include "preferences/PreferencesState.h"
#include "preferences/PreferencesStateCoding.h"
#include "support/Printing.h"
#include "support/Properties.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace velmorand {

/// How a record appears when a property does not hold for it.
void showValue(const PreferencesState& state, std::ostream& out) {
    PrintTo(state, &out);
}

namespace {

rc::Gen<std::string> anyActionName() {
    const auto known = rc::gen::map(rc::gen::inRange<std::size_t>(0, allWindowActions.size()), [](std::size_t place) {
        return std::string(rawValue(allWindowActions.at(place)));
    });
    return rc::gen::oneOf(known, known, rc::gen::element<std::string>("leftHalf", "moveToSpace", "Left", ""),
                          anyText());
}

rc::Gen<KeyboardShortcut> anyShortcut() {
    return rc::gen::apply(
        [](std::uint32_t keyCode, std::uint32_t modifiers, std::string label) {
            return KeyboardShortcut{{keyCode, ShortcutModifiers(modifiers)}, std::move(label)};
        },
        rc::gen::arbitrary<std::uint32_t>(), rc::gen::arbitrary<std::uint32_t>(), anyText());
}

/// Any record that can be stored, normalised or not.
rc::Gen<PreferencesState> anyState() {
    using Shortcuts = std::map<std::string, KeyboardShortcut>;
    using Strings = std::vector<std::string>;
    return rc::gen::build<PreferencesState>(
        rc::gen::set(&PreferencesState::shortcuts, rc::gen::container<Shortcuts>(anyActionName(), anyShortcut())),
        rc::gen::set(&PreferencesState::ignoredApps, rc::gen::container<Strings>(anyText())),
        rc::gen::set(&PreferencesState::clampToVisibleArea),
        rc::gen::set(&PreferencesState::disabledShortcutActions, rc::gen::container<Strings>(anyActionName())),
        rc::gen::set(&PreferencesState::outerPadding, anyFiniteNumber()),
        rc::gen::set(&PreferencesState::innerGap, anyFiniteNumber()), rc::gen::set(&PreferencesState::enableAnimations),
        rc::gen::set(&PreferencesState::animationDuration, anyFiniteNumber()));
}

/// The record with text as it can be stored.
PreferencesState withValidText(PreferencesState state) {
    std::map<std::string, KeyboardShortcut> shortcuts;
    for (const auto& [action, shortcut] : state.shortcuts)
        shortcuts.insert_or_assign(validUtf8(action), KeyboardShortcut{shortcut.hotKey, validUtf8(shortcut.keyLabel)});
    state.shortcuts = std::move(shortcuts);
    for (std::string& identifier : state.ignoredApps) identifier = validUtf8(identifier);
    for (std::string& action : state.disabledShortcutActions) action = validUtf8(action);
    return state;
}

std::string encoded(const PreferencesState& state) {
    return encodePreferencesState(state).value();
}

PreferencesState decoded(const std::string& document) {
    return decodePreferencesState(document).value();
}

RC_GTEST_PROP(PreferencesStateProperty, WhatIsStoredAndReadIsTheNormalizedRecord, ()) {
    const PreferencesState state = *anyState();

    RC_ASSERT(decoded(encoded(state)) == normalized(withValidText(state)));
}

RC_GTEST_PROP(PreferencesStateProperty, NormalizingTwiceIsNormalizingOnce, ()) {
    const PreferencesState state = normalized(*anyState());

    RC_ASSERT(normalized(state) == state);
}

RC_GTEST_PROP(PreferencesStateProperty, CompletingTwiceIsCompletingOnce, ()) {
    const PreferencesState state = completed(*anyState());

    RC_ASSERT(completed(state) == state);
}

RC_GTEST_PROP(PreferencesStateProperty, ACompleteNormalizedRecordHasEveryActionAndNoOther, ()) {
    const PreferencesState state = completed(normalized(*anyState()));

    RC_ASSERT(state.shortcuts.size() == allWindowActions.size());
    RC_ASSERT(normalized(state) == state);
}

RC_GTEST_PROP(PreferencesStateProperty, CompletingChangesNoEffectiveShortcut, ()) {
    const PreferencesState state = *anyState();

    for (const WindowAction action : allWindowActions)
        RC_ASSERT(effectiveShortcut(completed(state), action) == effectiveShortcut(state, action));
}

RC_GTEST_PROP(PreferencesStateProperty, ADocumentThatWasReadIsWrittenTheSameFromThenOn, ()) {
    const std::string document = encoded(decoded(encoded(*anyState())));

    RC_ASSERT(encoded(decoded(document)) == document);
}

RC_GTEST_PROP(PreferencesStateProperty, ADocumentThatIsCutOffIsRefused, ()) {
    const std::string document = encoded(*anyState());
    const auto length = *rc::gen::inRange<std::size_t>(0, document.size());

    RC_ASSERT(!decodePreferencesState(document.substr(0, length)));
}

RC_GTEST_PROP(PreferencesStateProperty, ADocumentWithAnotherByteIsARecordThatCanBeStoredOrNone, ()) {
    std::string document = encoded(*anyState());
    const auto place = *rc::gen::inRange<std::size_t>(0, document.size());
    document[place] = static_cast<char>(*rc::gen::arbitrary<std::uint8_t>());

    const auto state = decodePreferencesState(document);
    if (state) RC_ASSERT(decoded(encoded(*state)) == *state);
}

}  // namespace
}  // namespace velmorand
