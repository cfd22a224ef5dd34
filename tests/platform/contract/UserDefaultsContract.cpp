#include "platform/UserDefaults.h"
#include "platform/contract/Contracts.h"

#include <string>
#include <string_view>
#include <vector>

namespace velmorand {

using namespace std::string_view_literals;

UserDefaults& UserDefaultsContract::userDefaults() {
    return desktop->platform().userDefaults();
}

std::optional<std::string> UserDefaultsContract::stored(std::string_view key) {
    const auto bytes = userDefaults().data(key);
    if (!bytes) ADD_FAILURE() << bytes.error().description;
    return bytes.value_or(std::nullopt);
}

void UserDefaultsContract::store(std::string_view key, std::string_view bytes) {
    const auto outcome = userDefaults().setData(key, bytes);
    EXPECT_TRUE(outcome) << outcome.error().description;
}

TEST_P(UserDefaultsContract, AKeyThatNothingWasStoredUnderIsAbsent) {
    EXPECT_EQ(stored("ContractKey"), std::nullopt);
    store("ContractKey", "value");
    EXPECT_EQ(stored("OtherContractKey"), std::nullopt);
    EXPECT_EQ(stored("Contract"), std::nullopt);
}

TEST_P(UserDefaultsContract, WhatWasStoredIsReadByteForByte) {
    std::string everyByte;
    for (int byte = 0; byte < 256; ++byte) everyByte += static_cast<char>(byte);
    for (const std::string_view bytes : {R"({"outerPadding":8})"sv, "\0"sv, "a\0b\0"sv, "line\nline\r\n"sv,
                                         " \xEF\xBB\xBF "sv, std::string_view(everyByte)}) {
        store("ContractKey", bytes);
        EXPECT_EQ(stored("ContractKey"), bytes);
    }
}

TEST_P(UserDefaultsContract, AnEmptyValueIsAValue) {
    store("ContractKey", "");
    EXPECT_EQ(stored("ContractKey"), "");

    store("ContractKey", "value");
    store("ContractKey", "");
    EXPECT_EQ(stored("ContractKey"), "");
}

TEST_P(UserDefaultsContract, OneMebibyteIsStoredWhole) {
    std::string bytes;
    for (std::size_t i = 0; i < 1U << 20U; ++i) bytes += static_cast<char>(i * 31 / 7);

    store("ContractKey", bytes);

    EXPECT_TRUE(stored("ContractKey") == bytes);
}

TEST_P(UserDefaultsContract, ALaterValueTakesThePlaceOfAnEarlierOne) {
    store("ContractKey", std::string(10'000, 'a'));
    store("ContractKey", "short");
    EXPECT_EQ(stored("ContractKey"), "short");
    store("ContractKey", "a longer one");
    EXPECT_EQ(stored("ContractKey"), "a longer one");
}

TEST_P(UserDefaultsContract, KeysDoNotDependOnEachOther) {
    store("ContractKey", "first");
    store("ContractKey2", "second");
    store("contractKey", "third");
    store("ContractKey", "changed");

    EXPECT_EQ(stored("ContractKey"), "changed");
    EXPECT_EQ(stored("ContractKey2"), "second");
    EXPECT_EQ(stored("contractKey"), "third");
}

TEST_P(UserDefaultsContract, ReadingChangesNothing) {
    store("ContractKey", "value");

    EXPECT_EQ(stored("ContractKey"), "value");
    EXPECT_EQ(stored("ContractKey"), "value");
}

TEST_P(UserDefaultsContract, AKeyAndAValueMayBePartsOfALongerText) {
    constexpr std::string_view text = "ContractKeyvalue";

    store(text.substr(0, 11), text.substr(11, 3));

    EXPECT_EQ(stored("ContractKey"), "val");
    EXPECT_EQ(stored(text), std::nullopt);
}

}  // namespace velmorand
