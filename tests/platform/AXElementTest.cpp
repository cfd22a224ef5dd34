#include "platform/AXElement.h"

#include "platform/IdentityElementBody.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <unordered_set>

namespace velmorand {
namespace {

using NumberBody = IdentityElementBody<std::uint64_t>;
using TextBody = IdentityElementBody<std::string>;

TEST(AXElement, ReferencesToOneObjectAreEqualAndHashEqual) {
    const AXElement first = NumberBody::makeElement(7);
    const AXElement second = NumberBody::makeElement(7);

    EXPECT_TRUE(first == second);
    EXPECT_EQ(first.hash(), second.hash());
    EXPECT_EQ(std::hash<AXElement>{}(first), first.hash());
}

TEST(AXElement, ReferencesToDifferentObjectsDiffer) {
    EXPECT_FALSE(NumberBody::makeElement(7) == NumberBody::makeElement(8));
}

TEST(AXElement, ACopyStandsForTheSameObject) {
    const AXElement element = TextBody::makeElement("window");
    const AXElement copy = element;  // NOLINT(performance-unnecessary-copy-initialization): the copy is the point

    EXPECT_TRUE(copy == element);
    EXPECT_EQ(&copy.body(), &element.body());
}

TEST(AXElement, ElementsOfDifferentIdentityTypesAreNeverEqual) {
    EXPECT_FALSE(NumberBody::makeElement(7) == TextBody::makeElement("7"));
    EXPECT_FALSE(NumberBody::makeElement(7) == IdentityElementBody<std::int32_t>::makeElement(7));
}

TEST(AXElement, ThePlatformFindsTheIdentityOfItsOwnElementsOnly) {
    const AXElement element = TextBody::makeElement("window");

    ASSERT_NE(TextBody::identityOf(element), nullptr);
    EXPECT_EQ(*TextBody::identityOf(element), "window");
    EXPECT_EQ(NumberBody::identityOf(element), nullptr);
}

TEST(AXElement, IsFoundAgainInASet) {
    const std::unordered_set<AXElement> elements{NumberBody::makeElement(1), NumberBody::makeElement(2),
                                                 NumberBody::makeElement(1)};

    EXPECT_EQ(elements.size(), 2U);
    EXPECT_TRUE(elements.contains(NumberBody::makeElement(2)));
    EXPECT_FALSE(elements.contains(NumberBody::makeElement(3)));
}

}  // namespace
}  // namespace velmorand
