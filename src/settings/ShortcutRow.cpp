#include "settings/ShortcutRow.h"

#include "settings/QtText.h"
#include "settings/ShortcutGlyphs.h"
#include "settings/TranslatedText.h"

#include <utility>
#include <variant>

namespace velmorand {
namespace {

using Miniature = ShortcutRow::Miniature;

struct MiniatureOf {
    Miniature operator()(const Fraction&) const { return Miniature::Fraction; }
    Miniature operator()(const MoveDisplay& move) const {
        return move.offset < 0 ? Miniature::PreviousDisplay : Miniature::NextDisplay;
    }
    Miniature operator()(const Maximize&) const { return Miniature::Maximize; }
    Miniature operator()(const Center&) const { return Miniature::Center; }
    Miniature operator()(const Restore&) const { return Miniature::Restore; }
};

}  // namespace

ShortcutRow::ShortcutRow(WindowAction action, std::function<void()> record, QObject* parent)
    : QObject(parent), action_(action), record_(std::move(record)) {}

QString ShortcutRow::title() const {
    return titleOf(action_);
}

QString ShortcutRow::toolTip() const {
    return tr("Click to record a new shortcut for %1").arg(title());
}

ShortcutRow::Miniature ShortcutRow::miniature() const {
    return std::visit(MiniatureOf{}, kind(action_));
}

QRectF ShortcutRow::targetArea() const {
    const WindowActionKind actionKind = kind(action_);
    const auto* fraction = std::get_if<Fraction>(&actionKind);
    return fraction == nullptr ? QRectF(0, 0, 1, 1)
                               : QRectF(fraction->x, fraction->y, fraction->width, fraction->height);
}

QStringList ShortcutRow::glyphs() const {
    return shortcut_ ? shortcutGlyphs(*shortcut_) : QStringList();
}

QString ShortcutRow::spoken() const {
    return shortcut_ ? toQString(spokenDescription(*shortcut_)) : tr("None");
}

void ShortcutRow::setShortcut(const std::optional<KeyboardShortcut>& shortcut) {
    if (shortcut == shortcut_) return;
    shortcut_ = shortcut;
    Q_EMIT shortcutChanged();
}

void ShortcutRow::setProblem(const QString& problem) {
    if (problem == problem_) return;
    problem_ = problem;
    Q_EMIT problemChanged();
}

void ShortcutRow::setBeingRecorded(bool isBeingRecorded) {
    if (isBeingRecorded == isBeingRecorded_) return;
    isBeingRecorded_ = isBeingRecorded;
    Q_EMIT isBeingRecordedChanged();
}

}  // namespace velmorand
