#include "main/modules.h"
#include "platform/application_endpoint.h"

namespace lexiquill {

namespace {

class Module final : public ActivationModule {
public:
    bool forwardStart(const QStringList &arguments) override {
        return lexiquill::forwardStart(StartRequest::fromArguments(arguments),
                                       ActivationTokens::ofThisProcess());
    }
};

} // namespace

} // namespace lexiquill

LEXIQUILL_MODULE(ActivationModule, lexiquill::Module)
