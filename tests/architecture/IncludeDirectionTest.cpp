#include "architecture/IncludeRules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>
#include <string_view>

namespace velmorand {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;

/// The tree of one file that includes one header, both named by their path inside `src/`.
SourceTree fileIncluding(const std::string& file, const std::string& header) {
    return {{file, "#pragma once\n#include \"" + header + "\"\n"}, {header, "#pragma once\n"}};
}

SourceTree fileIncludingLibrary(const std::string& file, const std::string& header) {
    return {{file, "#include <" + header + ">\n"}};
}

auto violation(const std::string& file, int line, const std::string& ruleText) {
    return AllOf(Field("file", &IncludeViolation::file, file), Field("line", &IncludeViolation::line, line),
                 Field("rule", &IncludeViolation::rule, HasSubstr(ruleText)));
}

struct Arrow {
    std::string_view file;
    std::string_view header;
};

TEST(IncludeDirectionTest, TheSourcesKeepTheOrderOfTheLayers) {
    const std::filesystem::path folder = std::filesystem::path(VELMORAND_SOURCE_DIR) / "src";
    const SourceTree sources = readSourceTree(folder);
    ASSERT_TRUE(sources.contains("base/Rect.h")) << "no sources found in " << folder;

    std::string problems;
    for (const IncludeViolation& found : findIncludeViolations(sources)) problems += describe(found) + "\n";
    EXPECT_EQ(problems, "");
}

TEST(IncludeRulesTest, AcceptsEveryArrowThatPointsDown) {
    constexpr auto arrows = std::to_array<Arrow>({
        {"base/Rect.h", "base/Point.h"},
        {"shortcuts/KeyboardShortcut.h", "base/Hash.h"},
        {"shortcuts/KeyLabels.cpp", "shortcuts/KeyTables.h"},
        {"platform/Displays.h", "base/Rect.h"},
        {"platform/Platform.h", "platform/Displays.h"},
        {"windows/WindowAction.h", "shortcuts/KeyboardShortcut.h"},
        {"preferences/PreferencesState.h", "windows/WindowAction.h"},
        {"preferences/PreferencesStore.h", "preferences/PreferencesState.h"},
        {"preferences/PreferencesStore.h", "platform/UserDefaults.h"},
        {"windows/AXWindowClient.h", "platform/Accessibility.h"},
        {"shortcuts/CarbonHotKeyRegistrar.h", "shortcuts/GlobalHotKeyRegistrar.h"},
        {"windows/WindowManager.h", "preferences/PreferencesStore.h"},
        {"shortcuts/ShortcutManager.h", "windows/WindowManager.h"},
        {"shortcuts/ShortcutRecorderPanel.h", "shortcuts/ShortcutManager.h"},
        {"settings/SettingsWindowController.h", "shortcuts/ShortcutRecorderPanel.h"},
        {"app/LaunchAtLogin.h", "platform/LoginItemService.h"},
        {"settings/SettingsWindowController.h", "app/LaunchAtLogin.h"},
        {"app/AppDelegate.h", "settings/SettingsWindowController.h"},
        {"app/AppDelegate.h", "platform/Platform.h"},
        {"platform/simulated/SimulatedDisplays.h", "platform/Displays.h"},
        {"platform/linux/x11/X11HotKeys.h", "shortcuts/KeyboardShortcut.h"},
        {"platform/linux/x11/X11HotKeys.h", "platform/linux/WindowSystem.h"},
    });
    for (const auto& [file, header] : arrows) {
        const SourceTree sources = fileIncluding(std::string(file), std::string(header));
        EXPECT_THAT(findIncludeViolations(sources), IsEmpty()) << file << " -> " << header;
    }
}

TEST(IncludeRulesTest, RefusesEveryArrowThatPointsUpOrAside) {
    constexpr auto arrows = std::to_array<Arrow>({
        {"base/Rect.h", "shortcuts/KeyboardShortcut.h"},
        {"base/Rect.h", "platform/Displays.h"},
        {"shortcuts/KeyboardShortcut.h", "windows/WindowAction.h"},
        {"shortcuts/KeyboardShortcut.h", "platform/HotKeyService.h"},
        {"platform/HotKeyService.h", "shortcuts/KeyboardShortcut.h"},
        {"platform/Displays.h", "windows/ScreenGeometryProvider.h"},
        {"platform/Platform.h", "platform/linux/WindowSystem.h"},
        {"windows/WindowAction.h", "windows/AXWindowClient.h"},
        {"windows/WindowAction.h", "platform/Accessibility.h"},
        {"preferences/PreferencesState.h", "preferences/PreferencesStore.h"},
        {"preferences/PreferencesStore.h", "windows/WindowManager.h"},
        {"windows/RestoreTracker.h", "windows/WindowManager.h"},
        {"shortcuts/CarbonHotKeyRegistrar.h", "shortcuts/ShortcutManager.h"},
        {"windows/WindowManager.h", "shortcuts/ShortcutManager.h"},
        {"windows/WindowManager.h", "platform/linux/WindowSystem.h"},
        {"shortcuts/ShortcutManager.h", "app/AppDelegate.h"},
        {"shortcuts/ShortcutManager.h", "settings/SettingsWindowController.h"},
        {"settings/SettingsWindowController.h", "app/MenuBarController.h"},
        {"app/LaunchAtLogin.h", "settings/SettingsWindowController.h"},
        {"app/AppDelegate.h", "platform/linux/LinuxPlatform.h"},
        {"platform/simulated/SimulatedDisplays.h", "windows/ScreenGeometryProvider.h"},
        {"platform/linux/LinuxAccessibility.h", "windows/AXWindowClient.h"},
        {"platform/linux/LinuxAccessibility.h", "platform/simulated/SimulatedDisplays.h"},
        {"platform/simulated/SimulatedDisplays.h", "platform/linux/WindowSystem.h"},
        {"platform/macos/MacDisplays.mm", "platform/linux/WindowSystem.h"},
    });
    for (const auto& [file, header] : arrows) {
        const SourceTree sources = fileIncluding(std::string(file), std::string(header));
        EXPECT_THAT(findIncludeViolations(sources), ElementsAre(violation(std::string(file), 2, "may not include")))
            << file << " -> " << header;
    }
}

TEST(IncludeRulesTest, KeepsToolkitsAndOperatingSystemsOutOfTheCoreTheSeamAndTheSimulatedDesktop) {
    constexpr auto files = std::to_array<std::string_view>({
        "base/Rect.h",
        "shortcuts/KeyboardShortcut.h",
        "shortcuts/ShortcutManager.cpp",
        "windows/WindowManager.cpp",
        "preferences/PreferencesStore.cpp",
        "platform/Displays.h",
        "platform/simulated/SimulatedDisplays.h",
    });
    constexpr auto headers = std::to_array<std::string_view>({
        "QString",
        "QtCore/QObject",
        "xcb/xcb.h",
        "X11/Xlib.h",
        "unistd.h",
        "sys/eventfd.h",
        "linux/input.h",
        "systemd/sd-journal.h",
        "windows.h",
        "AppKit/AppKit.h",
        "xkbcommon/xkbcommon.h",
    });
    for (const std::string_view file : files) {
        for (const std::string_view header : headers) {
            const SourceTree sources = fileIncludingLibrary(std::string(file), std::string(header));
            EXPECT_THAT(findIncludeViolations(sources), ElementsAre(violation(std::string(file), 1, "may use the C++")))
                << file << " -> " << header;
        }
    }
}

TEST(IncludeRulesTest, LetsEachLayerUseItsLibraries) {
    constexpr auto includes = std::to_array<Arrow>({
        {"base/UnicodeText.cpp", "unicode/brkiter.h"},
        {"windows/WindowManager.cpp", "fmt/format.h"},
        {"base/JsonValue.cpp", "rapidjson/reader.h"},
        {"windows/WindowManager.cpp", "string_view"},
        {"app/Main.cpp", "QGuiApplication"},
        {"settings/SettingsViewModel.h", "QtCore/QObject"},
        {"platform/linux/x11/X11Connection.h", "xcb/xcb.h"},
        {"platform/linux/LinuxLog.cpp", "systemd/sd-journal.h"},
        {"platform/linux/LinuxRunLoop.cpp", "QTimer"},
        {"platform/linux/LinuxRunLoop.cpp", "sys/eventfd.h"},
        {"platform/macos/MacDisplays.mm", "AppKit/AppKit.h"},
    });
    for (const auto& [file, header] : includes) {
        const SourceTree sources = fileIncludingLibrary(std::string(file), std::string(header));
        EXPECT_THAT(findIncludeViolations(sources), IsEmpty()) << file << " -> " << header;
    }
}

TEST(IncludeRulesTest, KeepsTheWindowServerOutOfTheApplicationFolders) {
    EXPECT_THAT(findIncludeViolations(fileIncludingLibrary("app/AppDelegate.cpp", "xcb/xcb.h")),
                ElementsAre(violation("app/AppDelegate.cpp", 1, "and Qt only")));
    EXPECT_THAT(findIncludeViolations(fileIncludingLibrary("settings/SettingsView.cpp", "unistd.h")),
                ElementsAre(violation("settings/SettingsView.cpp", 1, "and Qt only")));
}

TEST(IncludeRulesTest, IsNotFooledByTheWayAnIncludeIsWritten) {
    const SourceTree sources{
        {"base/Rect.h", "  #  include \"../windows/WindowManager.h\"\n"
                        "#include <windows/WindowManager.h>\n"
                        "#include \"xcb/xcb.h\"\n"
                        "#import \"windows/WindowManager.h\"\n"
                        "#include HEADER_NAME\n"
                        "#include \"base/./Point.h\"  // \"windows/WindowManager.h\"\r\n"},
        {"base/Point.h", ""},
        {"windows/WindowManager.h", ""},
    };
    EXPECT_THAT(findIncludeViolations(sources),
                ElementsAre(violation("base/Rect.h", 1, "may not include windows/WindowManager"),
                            violation("base/Rect.h", 2, "may not include windows/WindowManager"),
                            violation("base/Rect.h", 3, "may use the C++ standard library"),
                            violation("base/Rect.h", 4, "may not include windows/WindowManager"),
                            violation("base/Rect.h", 5, "must be written out")));
}

TEST(IncludeRulesTest, ReadsNoIncludeOutOfAComment) {
    const SourceTree sources{{"base/Rect.h", "// #include <QString>\n"
                                             "/* #include <QString> */\n"
                                             "/*\n"
                                             "#include <QString>\n"
                                             "*/\n"
                                             "#include <unistd.h>\n"}};
    EXPECT_THAT(findIncludeViolations(sources), ElementsAre(violation("base/Rect.h", 6, "may use")));
}

TEST(IncludeRulesTest, AcceptsAGeneratedHeaderWhereItsFolderMayBeIncluded) {
    EXPECT_THAT(findIncludeViolations({{"app/Main.cpp", "#include \"base/Version.h\"\n"}}), IsEmpty());
    EXPECT_THAT(findIncludeViolations({{"base/Rect.cpp", "#include \"app/Version.h\"\n"}}),
                ElementsAre(violation("base/Rect.cpp", 1, "may not include app/")));
}

TEST(IncludeRulesTest, ReportsAFileOutsideEveryLayer) {
    EXPECT_THAT(findIncludeViolations({{"utils/Strings.h", ""}, {"platform/beos/Displays.h", ""}}),
                ElementsAre(violation("platform/beos/Displays.h", 1, "belongs to no layer"),
                            violation("utils/Strings.h", 1, "belongs to no layer")));
}

TEST(IncludeRulesTest, ReportsACircleOfHeadersOnceWithItsWay) {
    const SourceTree sources{
        {"base/A.h", "#include \"base/B.h\"\n"},
        {"base/B.h", "#include <string>\n#include \"base/C.h\"\n"},
        {"base/C.h", "\n\n#include \"base/A.h\"\n"},
        {"base/Entry.h", "#include \"base/A.h\"\n#include \"base/C.h\"\n"},
    };
    EXPECT_THAT(findIncludeViolations(sources),
                ElementsAre(violation("base/C.h", 3, "circle of files: base/A -> base/B -> base/C -> base/A")));
}

TEST(IncludeRulesTest, ReportsACircleThatClosesThroughASourceFile) {
    const SourceTree sources{
        {"windows/A.h", ""},
        {"windows/A.cpp", "#include \"windows/A.h\"\n#include \"windows/B.h\"\n"},
        {"windows/B.h", "#include \"windows/A.h\"\n"},
    };
    EXPECT_THAT(findIncludeViolations(sources), ElementsAre(violation("windows/B.h", 1, "circle")));
}

TEST(IncludeRulesTest, ReportsAHeaderThatIncludesItself) {
    EXPECT_THAT(findIncludeViolations({{"base/A.h", "#include \"base/A.h\"\n"}}),
                ElementsAre(violation("base/A.h", 1, "circle of files: base/A -> base/A")));
}

TEST(IncludeRulesTest, SeesNoCircleWhereTwoWaysMeet) {
    const SourceTree sources{
        {"base/Top.h", "#include \"base/Left.h\"\n#include \"base/Right.h\"\n"},
        {"base/Left.h", "#include \"base/Bottom.h\"\n"},
        {"base/Right.h", "#include \"base/Bottom.h\"\n"},
        {"base/Bottom.h", ""},
        {"base/Bottom.cpp", "#include \"base/Bottom.h\"\n"},
    };
    EXPECT_THAT(findIncludeViolations(sources), IsEmpty());
}

TEST(IncludeRulesTest, DescribesAViolationByFileLineIncludeAndRule) {
    EXPECT_EQ(describe({"base/A.h", 7, "<QString>", "base may use no toolkit"}),
              "src/base/A.h:7: #include <QString>: base may use no toolkit");
    EXPECT_EQ(describe({"utils/A.h", 1, "", "the file belongs to no layer"}),
              "src/utils/A.h:1: the file belongs to no layer");
}

}  // namespace
}  // namespace velmorand
