#include "architecture/IncludeRules.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>
#include <span>
#include <sstream>
#include <string_view>
#include <utility>

namespace velmorand {
namespace {

enum class Layer : std::uint8_t {
    base,
    shortcutModel,
    seam,
    values,
    services,
    windowManager,
    shortcutManager,
    settings,
    app,
    simulatedPlatform,
    linuxPlatform,
    macosPlatform,
};

enum class Libraries : std::uint8_t { portable, portableAndQt, any };

struct LayerRule {
    Layer layer;
    std::string_view name;
    Libraries libraries;
    /// Besides itself.
    std::vector<Layer> mayInclude;
};

struct PathRule {
    std::string_view prefix;
    Layer layer;
};

/// The first prefix that fits decides.
constexpr auto pathRules = std::to_array<PathRule>({
    {"base/", Layer::base},
    {"shortcuts/Key", Layer::shortcutModel},
    {"shortcuts/ShortcutModifiers", Layer::shortcutModel},
    {"shortcuts/ShortcutManager", Layer::shortcutManager},
    {"shortcuts/ShortcutRecorder", Layer::shortcutManager},
    {"shortcuts/", Layer::services},
    {"windows/WindowAction", Layer::values},
    {"windows/WindowManager", Layer::windowManager},
    {"windows/", Layer::services},
    {"preferences/PreferencesState", Layer::values},
    {"preferences/", Layer::services},
    {"platform/simulated/", Layer::simulatedPlatform},
    {"platform/linux/", Layer::linuxPlatform},
    {"platform/macos/", Layer::macosPlatform},
    {"platform/", Layer::seam},
    {"settings/", Layer::settings},
    {"app/LaunchAtLogin", Layer::services},
    {"app/", Layer::app},
});

const LayerRule& ruleOf(Layer layer) {
    using enum Layer;
    static const std::vector<LayerRule> rules{
        {base, "base", Libraries::portable, {}},
        {shortcutModel,
         "the shortcut model (shortcuts/Key*, shortcuts/ShortcutModifiers)",
         Libraries::portable,
         {base}},
        {seam, "the platform seam (platform/*.h)", Libraries::portable, {base}},
        {values,
         "the values (windows/WindowAction*, preferences/PreferencesState*)",
         Libraries::portable,
         {base, shortcutModel}},
        {services,
         "the stores and services (the rest of windows/, preferences/ and shortcuts/, app/LaunchAtLogin)",
         Libraries::portable,
         {base, shortcutModel, seam, values}},
        {windowManager, "windows/WindowManager", Libraries::portable, {base, shortcutModel, seam, values, services}},
        {shortcutManager,
         "shortcuts/ShortcutManager and ShortcutRecorder",
         Libraries::portable,
         {base, shortcutModel, seam, values, services, windowManager}},
        {settings,
         "settings/",
         Libraries::portableAndQt,
         {base, shortcutModel, seam, values, services, windowManager, shortcutManager}},
        {app,
         "app/",
         Libraries::portableAndQt,
         {base, shortcutModel, seam, values, services, windowManager, shortcutManager, settings}},
        {simulatedPlatform, "platform/simulated/", Libraries::portable, {base, shortcutModel, seam}},
        {linuxPlatform, "platform/linux/", Libraries::any, {base, shortcutModel, seam}},
        {macosPlatform, "platform/macos/", Libraries::any, {base, shortcutModel, seam}},
    };
    return *std::ranges::find(rules, layer, &LayerRule::layer);
}

std::optional<Layer> layerOf(std::string_view path) {
    const auto rule =
        std::ranges::find_if(pathRules, [&](const PathRule& candidate) { return path.starts_with(candidate.prefix); });
    if (rule == pathRules.end()) return std::nullopt;
    // The seam is the files of its folder alone: a folder below it is a platform, and must be named above.
    if (rule->layer == Layer::seam && path.find('/', rule->prefix.size()) != std::string_view::npos)
        return std::nullopt;
    return rule->layer;
}

std::string_view allowedLibraries(Libraries libraries) {
    switch (libraries) {
        case Libraries::portable: return "the C++ standard library, RapidJSON, fmt and ICU only";
        case Libraries::portableAndQt: return "the C++ standard library, RapidJSON, fmt, ICU and Qt only";
        case Libraries::any: return "any library";
    }
    return {};
}

bool isStandardHeader(std::string_view header) {
    return std::ranges::all_of(header,
                               [](char c) { return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_'; });
}

bool isAllowed(std::string_view header, Libraries libraries) {
    if (libraries == Libraries::any) return true;
    constexpr std::array<std::string_view, 3> portable{"rapidjson/", "fmt/", "unicode/"};
    if (isStandardHeader(header)) return true;
    if (std::ranges::any_of(portable, [&](std::string_view folder) { return header.starts_with(folder); })) return true;
    return libraries == Libraries::portableAndQt && header.starts_with('Q');
}

std::string allowedLayers(const LayerRule& rule) {
    std::string text = "itself";
    for (const Layer layer : rule.mayInclude) {
        text += ", ";
        text += ruleOf(layer).name;
    }
    return text;
}

struct Include {
    int line = 0;
    /// With quotes or brackets.
    std::string written;
    std::string name;
};

std::string_view trimmedLeft(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t");
    return start == std::string_view::npos ? std::string_view{} : text.substr(start);
}

/// What follows `#include` or `#import` on a line; absent on any other line.
std::optional<std::string_view> includeOperand(std::string_view line) {
    std::string_view rest = trimmedLeft(line);
    if (!rest.starts_with('#')) return std::nullopt;
    rest = trimmedLeft(rest.substr(1));
    for (const std::string_view directive : {std::string_view("include"), std::string_view("import")}) {
        if (!rest.starts_with(directive)) continue;
        const std::string_view operand = rest.substr(directive.size());
        if (operand.empty() || std::string_view(" \t\"<").contains(operand.front())) return trimmedLeft(operand);
    }
    return std::nullopt;
}

/// A name that is not written out (a macro) comes back as an include with an empty name.
Include parseOperand(int line, std::string_view operand) {
    const char closing = operand.starts_with('<') ? '>' : '"';
    const bool quotedOrBracketed = operand.starts_with('<') || operand.starts_with('"');
    const std::size_t end = quotedOrBracketed ? operand.find(closing, 1) : std::string_view::npos;
    if (end == std::string_view::npos) return {line, std::string(operand), {}};
    return {line, std::string(operand.substr(0, end + 1)), std::string(operand.substr(1, end - 1))};
}

/// What is left of a line after the block comment it is in or starts with; empty while the comment goes on.
std::string_view afterBlockComment(std::string_view line, bool& inComment) {
    if (!inComment && !trimmedLeft(line).starts_with("/*")) return line;
    const std::size_t end = line.find("*/");
    inComment = end == std::string_view::npos;
    return inComment ? std::string_view{} : line.substr(end + 2);
}

std::vector<Include> includesOf(const std::string& text) {
    std::vector<Include> includes;
    std::istringstream lines(text);
    std::string line;
    bool inComment = false;
    for (int number = 1; std::getline(lines, line); ++number) {
        const auto operand = includeOperand(afterBlockComment(line, inComment));
        if (operand) includes.push_back(parseOperand(number, *operand));
    }
    return includes;
}

/// The path inside `src/` that an include names; absent when it names a library's header. A quoted name in one of
/// our folders that is not in the tree is a generated file and counts as ours.
std::optional<std::string> resolve(const SourceTree& sources, const std::string& file, const Include& include) {
    const std::filesystem::path name(include.name);
    const bool quoted = include.written.starts_with('"');
    if (quoted) {
        std::string beside = (std::filesystem::path(file).parent_path() / name).lexically_normal().generic_string();
        if (sources.contains(beside)) return beside;
    }
    std::string fromRoot = name.lexically_normal().generic_string();
    if (sources.contains(fromRoot) || (quoted && layerOf(fromRoot))) return fromRoot;
    return std::nullopt;
}

/// A header and the source file of the same name are one component.
std::string componentOf(const std::string& path) {
    return std::filesystem::path(path).replace_extension().generic_string();
}

struct Edge {
    std::string file;
    Include include;
    std::string target;
};

/// By the component that includes.
using IncludeGraph = std::map<std::string, std::vector<Edge>>;

/// Walks the graph depth first; an include of a component that is still being walked closes a circle.
class CircleFinder {
public:
    explicit CircleFinder(const IncludeGraph& graph) : graph_(graph) {}

    std::vector<IncludeViolation> find() {
        for (const auto& [component, edges] : graph_) visit(component);
        return std::move(violations_);
    }

private:
    void visit(const std::string& component) {
        if (!visited_.insert(component).second) return;
        const auto edges = graph_.find(component);
        if (edges == graph_.end()) return;
        path_.push_back(component);
        for (const Edge& edge : edges->second) {
            const std::string target = componentOf(edge.target);
            if (target == component && edge.file != edge.target) continue;
            const auto start = std::ranges::find(path_, target);
            if (start != path_.end()) {
                report(edge, std::span(start, path_.end()));
            } else {
                visit(target);
            }
        }
        path_.pop_back();
    }

    void report(const Edge& edge, std::span<const std::string> circle) {
        std::string rule = "closes a circle of files: ";
        for (const std::string& component : circle) rule += component + " -> ";
        violations_.push_back({edge.file, edge.include.line, edge.include.written, rule + circle.front()});
    }

    const IncludeGraph& graph_;
    std::set<std::string> visited_;
    std::vector<std::string> path_;
    std::vector<IncludeViolation> violations_;
};

/// What is wrong with one include; `target` is its path inside `src/`, absent for a library's header.
std::optional<std::string> brokenRule(const LayerRule& from, const Include& include,
                                      const std::optional<std::string>& target) {
    if (include.name.empty()) return "the name of the header must be written out";
    if (!target) {
        if (isAllowed(include.name, from.libraries)) return std::nullopt;
        return std::string(from.name) + " may use " + std::string(allowedLibraries(from.libraries));
    }
    const std::optional<Layer> to = layerOf(*target);
    // A file without a layer is reported for itself.
    if (!to || *to == from.layer || std::ranges::count(from.mayInclude, *to) > 0) return std::nullopt;
    return std::string(from.name) + " may not include " + std::string(ruleOf(*to).name) +
           "; it may include: " + allowedLayers(from);
}

}  // namespace

std::string describe(const IncludeViolation& violation) {
    std::string text = "src/" + violation.file + ":" + std::to_string(violation.line) + ": ";
    if (!violation.include.empty()) text += "#include " + violation.include + ": ";
    return text + violation.rule;
}

std::vector<IncludeViolation> findIncludeViolations(const SourceTree& sources) {
    std::vector<IncludeViolation> violations;
    IncludeGraph graph;
    for (const auto& [file, text] : sources) {
        const std::optional<Layer> layer = layerOf(file);
        if (!layer) {
            violations.push_back({file, 1, {}, "the file belongs to no layer; name its folder in the include rules"});
            continue;
        }
        for (const Include& include : includesOf(text)) {
            const std::optional<std::string> target = resolve(sources, file, include);
            if (target) graph[componentOf(file)].push_back({file, include, *target});
            if (auto rule = brokenRule(ruleOf(*layer), include, target))
                violations.push_back({file, include.line, include.written, *std::move(rule)});
        }
    }
    std::ranges::move(CircleFinder(graph).find(), std::back_inserter(violations));
    return violations;
}

SourceTree readSourceTree(const std::filesystem::path& folder) {
    constexpr std::array<std::string_view, 3> extensions{".h", ".cpp", ".mm"};
    SourceTree sources;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (std::ranges::count(extensions, entry.path().extension().string()) == 0) continue;
        std::ostringstream text;
        text << std::ifstream(entry.path(), std::ios::binary).rdbuf();
        sources[entry.path().lexically_relative(folder).generic_string()] = std::move(text).str();
    }
    return sources;
}

}  // namespace velmorand
