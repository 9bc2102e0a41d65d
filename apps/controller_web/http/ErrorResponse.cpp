#include "controller_web/http/ErrorResponse.h"

#include <utility>

#include "formats/json/Writing.h"
#include "text/Text.h"

namespace web {
namespace {

/// Always a JSON string, also for a text that no JSON string can represent: that becomes the most similar one.
void AppendString(std::string_view utf8, std::wstring& json) {
    json::AppendName(text::FromUtf8(utf8), json);
    json.pop_back();
}

} // namespace

Response TextResponse(unsigned status, std::string_view mediaType, std::string text) {
    Response response;
    response.status = status;
    response.headers = {{"Content-Type", std::string(mediaType)}};
    response.body = std::make_shared<const std::string>(std::move(text));
    return response;
}

Response ErrorResponse(unsigned status, std::string_view code, std::string_view message) {
    std::wstring json = LR"({"version":1,"error":{"code":)";
    AppendString(code, json);
    json += LR"(,"message":)";
    AppendString(message, json);
    return TextResponse(status, "application/json", text::ToUtf8(json + L"}}"));
}

} // namespace web
