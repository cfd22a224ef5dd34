#include "settings/ApplicationIconSource.h"

#include <QByteArray>
#include <array>
#include <string>
#include <utility>

namespace velmorand {
namespace {

constexpr std::array<std::pair<ApplicationIcon::Source, const char*>, 2> kinds{
    {{ApplicationIcon::Source::theme, "theme/"}, {ApplicationIcon::Source::file, "file/"}}};

/// Safe in an address, whatever the name is, and the same again after it was decoded and encoded on its way.
constexpr auto encoding = QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals;

QString startOfSources() {
    return QStringLiteral("image://%1/").arg(QLatin1StringView(applicationIconProviderName));
}

}  // namespace

QString sourceOfIcon(const std::optional<ApplicationIcon>& icon) {
    if (!icon) return {};
    QString source = startOfSources();
    for (const auto& [kind, prefix] : kinds) {
        if (kind == icon->source) source += QLatin1StringView(prefix);
    }
    return source + QString::fromLatin1(QByteArray::fromStdString(icon->name).toBase64(encoding));
}

std::optional<QString> idOfSource(const QString& source) {
    const QString start = startOfSources();
    if (!source.startsWith(start)) return std::nullopt;
    return source.sliced(start.size());
}

std::optional<ApplicationIcon> iconOfSourceId(const QString& id) {
    for (const auto& [kind, prefix] : kinds) {
        const QLatin1StringView start(prefix);
        if (!id.startsWith(start)) continue;
        const auto name = QByteArray::fromBase64Encoding(id.sliced(start.size()).toLatin1(),
                                                         encoding | QByteArray::AbortOnBase64DecodingErrors);
        if (name && !name.decoded.isEmpty()) return ApplicationIcon{kind, name.decoded.toStdString()};
    }
    return std::nullopt;
}

}  // namespace velmorand
