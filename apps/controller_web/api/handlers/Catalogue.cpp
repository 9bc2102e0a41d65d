#include "controller_web/api/handlers/Catalogue.h"

#include "controller_web/api/Answers.h"
#include "front_end/output/JsonOutput.h"
#include "text/Text.h"

namespace web {

Response GetScenarios(Services& services, const Call& /*call*/) {
    return JsonResponse(
        services.hosts.Run(front_end::Start::Never, [](front_end::CommandContext&, front_end::HostSession& session) {
            const std::vector<ScenarioInfo> scenarios = session.FetchScenarios();
            return front_end::ScenariosJson(scenarios, session.TakeScenarioProblems());
        }));
}

Response GetParameterSets(Services& services, const Call& call) {
    const std::wstring id = text::FromUtf8(call.id);
    return JsonResponse(
        services.hosts.Run(front_end::Start::Never, [&](front_end::CommandContext&, front_end::HostSession& session) {
            return front_end::ParameterSetsJson(session.FetchParameterSets(id));
        }));
}

} // namespace web
