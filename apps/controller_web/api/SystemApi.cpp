#include <utility>

#include "controller_web/api/Api.h"
#include "controller_web/api/queue/QuietConsole.h"
#include "front_end/connection/SystemHostAccess.h"
#include "platform/files/NativePath.h"
#include "platform/system/Clock.h"
#include "services/ResponseTimeout.h"
#include "services/Settings.h"

namespace web {
namespace {

/// The interface with the real host and what it needs.
class SystemApi final : public Handler {
public:
    explicit SystemApi(const ApiOptions& options)
        : texts(settings::Current()->stringResourceFile), api(MakeApi(PartsFor(options))) {}

    Response Handle(const Request& request) override { return api->Handle(request); }

private:
    ApiParts PartsFor(const ApiOptions& options) {
        const std::wstring directory = platform::ParentDirectory(settings::Current()->jobListFile);
        return {options.isReadOnly,
                {console, texts, host, nullptr, response_timeout::FromEnvironment(), platform::Now, L"controller_web"},
                directory,
                platform::ResolveAgainst(directory, L"uploads"),
                [] { return settings::Current()->web.inputDirectories; }};
    }

    QuietConsole console;
    const front_end::Texts texts;
    front_end::SystemHostAccess host;
    const std::unique_ptr<Handler> api;
};

} // namespace

std::unique_ptr<Handler> MakeApi(const ApiOptions& options) {
    return std::make_unique<SystemApi>(options);
}

} // namespace web
