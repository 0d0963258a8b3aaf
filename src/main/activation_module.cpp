#include "main/modules.h"
#include "platform/application_endpoint.h"

namespace lexiquill {

namespace {

class Module final : public ActivationModule {
public:
    bool forwardStart(const QStringList &arguments) override {
        // The tokens stay in the environment for the window that this process opens if it is the first.
        const ActivationTokens tokens{.activationToken = qEnvironmentVariable("XDG_ACTIVATION_TOKEN"),
                                      .startupId = qEnvironmentVariable("DESKTOP_STARTUP_ID")};
        return lexiquill::forwardStart(StartRequest::fromArguments(arguments), tokens);
    }
};

} // namespace

} // namespace lexiquill

LEXIQUILL_MODULE(ActivationModule, lexiquill::Module)
