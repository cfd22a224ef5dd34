#pragma once

#include "platform/Logger.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace velmorand {

class UserNotificationCenter;

/// Tells the user what keeps this program from working with other applications' windows. Nobody can grant that on these
/// desktops, so there is nothing to choose: it is a line in the log, and a notification that takes the place of the last
/// one of its kind.
class TrustPrompt {
public:
    /// `bundleIdentifier` is this program's. The notification center and the log must outlive it.
    TrustPrompt(UserNotificationCenter& center, Log& log, std::string_view bundleIdentifier);

    /// Logs the sentence at once; the notification follows where they can be shown. Never waits for it.
    void show(std::string_view sentence);

private:
    void notify(const std::string& sentence);

    UserNotificationCenter& center_;
    Logger logger_;
    std::string identifier_;
    std::optional<std::string> next_;  // the sentence that waits for the center's word whether it can be shown
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);  // for answers that come after the end
};

}  // namespace velmorand
