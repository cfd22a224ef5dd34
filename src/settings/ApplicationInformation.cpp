#include "settings/ApplicationInformation.h"

#include "platform/Bundle.h"
#include "settings/Contact.h"

namespace velmorand {

std::string versionText(const Bundle& bundle) {
    return bundle.informationText("CFBundleShortVersionString").value_or("0.1.0") + " (" +
           bundle.informationText("CFBundleVersion").value_or("1") + ")";
}

ApplicationInformation::ApplicationInformation(const Bundle& bundle, QObject* parent)
    : QObject(parent),
      versionText_(QString::fromStdString(velmorand::versionText(bundle))),
      bundleIdentifier_(QString::fromStdString(bundle.identifier().value_or(""))),
      contactAddress_(QString::fromUtf8(contactAddress.data(), static_cast<qsizetype>(contactAddress.size()))) {}

}  // namespace velmorand
