#include "settings/PreferenceSlider.h"

#include <cmath>
#include <utility>

namespace velmorand {

PreferenceSlider::PreferenceSlider(const SliderRule& rule, std::function<double()> read,
                                   std::function<void(double)> write, QObject* parent)
    : QObject(parent), rule_(rule), read_(std::move(read)), write_(std::move(write)) {}

QString PreferenceSlider::text() const {
    return QString::fromStdString(rule_.text(value()));
}

void PreferenceSlider::setValue(double value) {
    if (std::isfinite(value)) {
        const double rounded = rule_.rounded(value);
        if (rounded != read_()) write_(rounded);
    }
    Q_EMIT valueChanged();
}

}  // namespace velmorand
