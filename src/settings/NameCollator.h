#pragma once

#include <QCollator>

namespace velmorand {

/// The order of names in a list for the user: that of the user's language, without a difference between capital and small
/// letters, numbers by their value.
[[nodiscard]] inline QCollator nameCollator() {
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    collator.setNumericMode(true);
    return collator;
}

}  // namespace velmorand
