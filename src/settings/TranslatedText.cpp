#include "settings/TranslatedText.h"

#include <QCoreApplication>
#include <QStringList>
#include <string>

namespace velmorand {

QString translated(const char* context, std::string_view text) {
    return QCoreApplication::translate(context, std::string(text).c_str());
}

QString titleOf(WindowAction action) {
    return translated("WindowAction", metadata(action).title);
}

QString titlesOf(std::span<const WindowAction> actions) {
    QStringList titles;
    for (const WindowAction action : actions) titles.append(titleOf(action));
    return titles.join(QStringLiteral(", "));
}

}  // namespace velmorand
