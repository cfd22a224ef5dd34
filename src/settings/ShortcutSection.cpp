#include "settings/ShortcutSection.h"

#include <utility>

namespace velmorand {

ShortcutSection::ShortcutSection(WindowActionGroup group, const std::function<void(WindowAction)>& record,
                                 QObject* parent)
    : QObject(parent), group_(group) {
    for (const WindowAction action : actionsIn(group))
        rows_.append(new ShortcutRow(action, [record, action] { record(action); }, this));
}

QString ShortcutSection::title() const {
    switch (group_) {
        case WindowActionGroup::halves: return tr("Edges");
        case WindowActionGroup::quarters: return tr("Corners");
        case WindowActionGroup::thirds: return tr("Thirds");
        case WindowActionGroup::twoThirds: return tr("Two Thirds");
        case WindowActionGroup::displays: return tr("Displays");
        case WindowActionGroup::utility: return tr("Window Actions");
    }
    std::unreachable();
}

}  // namespace velmorand
