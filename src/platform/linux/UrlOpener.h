#pragma once

#include "platform/Logger.h"

#include <QObject>
#include <functional>
#include <string>
#include <string_view>

namespace velmorand {

/// Opens addresses with the programs that the user has for them. Such a program goes on by itself and nothing is heard
/// of it again, so the desktop is asked first whether there is one.
class UrlOpener {
public:
    using Completion = std::function<void(bool opened)>;

    /// `log` must outlive it.
    explicit UrlOpener(Log& log) : logger_(log, "workspace") {}

    UrlOpener(const UrlOpener&) = delete;
    UrlOpener& operator=(const UrlOpener&) = delete;
    ~UrlOpener() = default;

    /// Calls `completion` in a later turn, and not after the opener has died. What prevents the opening is logged.
    void open(std::string_view url, Completion completion);

private:
    /// `handler` is the desktop entry that the desktop names, or nothing.
    [[nodiscard]] bool openWith(std::string_view handler, const std::string& url);

    Logger logger_;
    /// The questions that wait for an answer are its children.
    QObject questions_;
};

}  // namespace velmorand
