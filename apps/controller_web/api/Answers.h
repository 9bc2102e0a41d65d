#pragma once

#include "controller_web/http/Request.h"
#include "controller_web/http/Response.h"

#include <exception>
#include <string>

/// Answers of the interface as `openapi.json` describes them. Threads: any.
namespace web {

/// Thrown by handlers that cannot do what was asked.
struct ApiError {
    unsigned status = 500;
    std::string code;
    /// For people: what failed, why, and what to do.
    std::wstring message;
    /// Further members of the error object, each with a comma before: `,"refused":[]`.
    std::wstring members = {};
};

ApiError BadRequest(const std::wstring& message);
ApiError NotFound(const std::wstring& message);

/// `json` may end with a line break. Texts with lone surrogates are rewritten (`front_end::MakePortable`).
Response JsonResponse(std::wstring json, unsigned status = 200);
Response ErrorAnswer(const ApiError& error);

/// The answer to a request whose handler has thrown this: errors of the interface and of the connection to the host.
Response AnswerTo(const std::exception_ptr& failure);

/// The value of a parameter of the query; empty if it is missing. Throws `ApiError` if it occurs several times.
std::wstring QueryValue(const Request& request, const std::string& name);

} // namespace web
