#include "controller_web/api/Answers.h"

#include "controller_web/api/queue/HostThread.h"
#include "controller_web/http/ErrorResponse.h"
#include "front_end/commands/CommandFailure.h"
#include "front_end/output/PortableJson.h"
#include "text/Text.h"

namespace web {
namespace {

ApiError ErrorOf(const front_end::CommandFailure& failure) {
    switch (failure.exitCode) {
    case front_end::ExitCode::Usage:
        return NotFound(failure.message);
    case front_end::ExitCode::JobFailed:
        return {409, "conflict", failure.message};
    case front_end::ExitCode::Interrupted:
        return {503, "no_host", L"The server is ending."};
    default:
        return {503, "no_host", failure.message};
    }
}

/// An error text without line breaks is never empty.
std::wstring TextOf(const std::wstring& message) {
    return message.empty() ? L"There is no further information; the log may have it." : message;
}

} // namespace

ApiError BadRequest(const std::wstring& message) {
    return {400, "bad_request", message};
}

ApiError NotFound(const std::wstring& message) {
    return {404, "not_found", message};
}

Response JsonResponse(std::wstring json, unsigned status) {
    front_end::MakePortable(json);
    return TextResponse(status, "application/json", text::ToUtf8(json));
}

Response ErrorAnswer(const ApiError& error) {
    Response response = ErrorResponse(error.status, error.code, text::ToUtf8(TextOf(error.message)));
    if (!error.members.empty()) {
        std::wstring members = error.members;
        front_end::MakePortable(members);
        std::string json = *std::get<Response::Text>(response.body);
        json.insert(json.size() - 2, text::ToUtf8(members));
        response.body = std::make_shared<const std::string>(std::move(json));
    }
    return response;
}

Response AnswerTo(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const ApiError& error) {
        return ErrorAnswer(error);
    } catch (const front_end::NoAnswerInTime& error) {
        return ErrorAnswer({504, "no_answer", error.message});
    } catch (const front_end::CommandFailure& error) {
        return ErrorAnswer(ErrorOf(error));
    } catch (const TooManyRequests&) {
        return ErrorAnswer({503, "no_answer", L"Too many requests wait for the host. Try again later."});
    } catch (const std::exception& error) {
        return ErrorAnswer({500, "internal_error", text::FromUtf8(error.what())});
    }
}

std::wstring QueryValue(const Request& request, const std::string& name) {
    const auto [first, end] = request.query.equal_range(name);
    if (first == end) {
        return {};
    }
    if (std::next(first) != end) {
        throw BadRequest(L"The parameter " + text::FromUtf8(name) + L" is given several times.");
    }
    return text::FromUtf8(first->second);
}

} // namespace web
