#pragma once

#include <QString>

namespace velmorand {

/// The text as it is compared in a search: without accents, and without a difference between capital and small letters.
/// Letters that have no accent but a stroke or a joint count as what they are typed for: ø as o, æ as ae.
[[nodiscard]] QString searchKey(const QString& text);

}  // namespace velmorand
