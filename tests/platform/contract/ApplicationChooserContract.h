#pragma once

#include "platform/ApplicationChooser.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace velmorand {

/// A chooser with a user in front of it. Three applications are there to be chosen.
class ChooserUnderContract {
public:
    virtual ~ChooserUnderContract() = default;
    ChooserUnderContract(const ChooserUnderContract&) = delete;
    ChooserUnderContract& operator=(const ChooserUnderContract&) = delete;

    [[nodiscard]] virtual ApplicationChooser& chooser() = 0;
    /// Where the three are, in the panel's order.
    [[nodiscard]] virtual std::vector<std::filesystem::path> applications() = 0;

    [[nodiscard]] virtual bool isOpen() = 0;
    /// What the open panel asks.
    [[nodiscard]] virtual ApplicationChooserOptions shown() = 0;
    /// Chooses the applications at these places, one after another, and confirms.
    virtual void choose(const std::vector<std::size_t>& places) = 0;
    virtual void cancel() = 0;
    /// Runs what waits in the main loop.
    virtual void finishTurn() = 0;

protected:
    ChooserUnderContract() = default;
};

/// Makes a chooser for one test.
struct ChooserFactory {
    std::string name;
    std::function<std::unique_ptr<ChooserUnderContract>()> make;

    friend void PrintTo(const ChooserFactory& factory, std::ostream* out) { *out << factory.name; }
};

/// What every chooser promises; to be instantiated for each.
class ApplicationChooserContract : public testing::TestWithParam<ChooserFactory> {
protected:
    using Answer = std::optional<std::vector<std::filesystem::path>>;

    /// Asks, and notes the answer.
    void ask(const ApplicationChooserOptions& options);
    /// Lets the last word about a closed panel be said.
    void finishTurn() { user->finishTurn(); }

    std::unique_ptr<ChooserUnderContract> user = GetParam().make();
    std::vector<Answer> answers;
};

}  // namespace velmorand
