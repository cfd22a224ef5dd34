#pragma once

#include "desktop/survey/SurveyJudgement.h"
#include "desktop/survey/SurveyManagers.h"
#include "desktop/survey/SurveyRun.h"

#include <map>
#include <vector>

namespace velmorand::desktop {

/// How the presses on one kind of window under one window manager ended.
class SurveyCell {
public:
    void add(const SurveyPress& press, const SurveyOutcome& outcome);

    [[nodiscard]] int landed() const { return landed_; }
    [[nodiscard]] int rounded() const { return rounded_; }
    [[nodiscard]] int refused() const { return refused_; }
    [[nodiscard]] int missed() const { return missed_; }
    /// Nothing was pressed: the window cannot be in that state.
    [[nodiscard]] bool isEmpty() const { return landed_ + rounded_ + refused_ + missed_ == 0; }
    /// What there is to say about those that were refused or missed, one sentence each.
    [[nodiscard]] std::vector<std::string> remarks() const;

private:
    struct Group {
        SurveyVerdict verdict = SurveyVerdict::missed;
        std::vector<std::string_view> actions;
    };

    int landed_ = 0;
    int rounded_ = 0;
    int refused_ = 0;
    int missed_ = 0;
    std::map<std::string, Group> groups_;
};

/// All cells of one window manager.
struct SurveyRow {
    const SurveyManager* manager = nullptr;
    std::string version = {};
    std::map<SurveyStart, std::vector<SurveyCell>> cells = {};
};

/// The whole document, in Markdown.
[[nodiscard]] std::string surveyDocument(std::span<const SurveyRow> rows);

}  // namespace velmorand::desktop
