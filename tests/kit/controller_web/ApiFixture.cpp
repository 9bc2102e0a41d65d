#include "kit/controller_web/ApiFixture.h"

#include "formats/Messages.h"
#include "formats/RunProtocol.h"
#include "kit/Deadline.h"
#include "platform/files/Directory.h"
#include "text/Text.h"

#include <array>
#include <condition_variable>
#include <mutex>
#include <utility>

#include <gtest/gtest.h>

namespace {

std::string Decoded(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%') {
            decoded += static_cast<char>(std::stoi(std::string(text.substr(i + 1, 2)), nullptr, 16));
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

std::vector<std::string> Split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(separator, begin), text.size());
        parts.emplace_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

const char* NameOf(web::Method method) {
    constexpr std::array names = {"get", "post", "put", "delete"};
    return names[static_cast<std::size_t>(method)];
}

std::string WholeBody(web::Response& response, bool& isBroken) {
    if (const auto* const text = std::get_if<web::Response::Text>(&response.body)) {
        return *text == nullptr ? std::string() : **text;
    }
    std::string body;
    if (auto* const reader = std::get_if<std::unique_ptr<web::ContentReader>>(&response.body)) {
        std::array<char, 1000> block{};
        std::optional<std::size_t> count = (*reader)->Read(block);
        for (; count.value_or(0) > 0; count = (*reader)->Read(block)) {
            body.append(block.data(), *count);
        }
        isBroken = !count;
    }
    return body;
}

} // namespace

ApiFixture::ApiFixture() {
    host.answers[L"FetchScenariosRequest"] = {
        L"FetchScenariosResponse", messages::Serialize(L"FetchScenariosResponse", std::vector<ScenarioInfo>())};
    host.onRequest = [this](const std::wstring& name) {
        if (name == L"FetchScenariosRequest" && nextChange) {
            std::exchange(nextChange, nullptr)();
        }
    };
}

ApiFixture::~ApiFixture() = default;

web::Request ApiFixture::RequestOf(web::Method method, const std::string& target, const std::string& body) {
    web::Request request;
    request.method = method;
    request.body = body;
    const std::size_t mark = std::min(target.find('?'), target.size());
    for (const std::string& part : Split(std::string_view(target).substr(1, mark - 1), '/')) {
        request.path.push_back(Decoded(part));
    }
    if (mark < target.size()) {
        for (const std::string& parameter : Split(std::string_view(target).substr(mark + 1), '&')) {
            const std::size_t sign = std::min(parameter.find('='), parameter.size());
            request.query.emplace(Decoded(parameter.substr(0, sign)),
                                  sign < parameter.size() ? Decoded(parameter.substr(sign + 1)) : "");
        }
    }
    return request;
}

web::Response ApiFixture::Handle(const web::Request& request) {
    if (api == nullptr) {
        api = web::MakeApi(web::ApiParts{false, context, directory.Path(), directory / L"uploads",
                                         [this] { return inputDirectories; }});
    }
    return api->Handle(request);
}

Answer ApiFixture::Checked(const web::Request& request, const std::string& target) {
    web::Response response = Handle(request);
    Answer answer;
    answer.status = response.status;
    answer.headers = {response.headers.begin(), response.headers.end()};
    answer.body = WholeBody(response, answer.isBroken);
    const std::string pattern = schemas.PatternOf(target.substr(0, target.find('?')));
    if (!pattern.empty() && answer.status != 405) {
        EXPECT_EQ(schemas.ProblemOf(NameOf(request.method), pattern, answer.status, answer.body), "") << target;
    }
    return answer;
}

/// The server stores the body of an upload before it passes the request on.
Answer ApiFixture::Send(web::Method method, const std::string& target, const std::string& body) {
    web::Request request = RequestOf(method, target, body);
    if (target.starts_with("/api/v1/uploads")) {
        request.file = std::make_shared<web::ReceivedFile>();
        EXPECT_TRUE(request.file->Create(directory / L"arriving"));
        EXPECT_TRUE(request.file->Append(std::exchange(request.body, {})));
    }
    return Checked(request, target);
}

Answer ApiFixture::GetRange(const std::string& target, const std::string& range) {
    web::Request request = RequestOf(web::Method::Get, target);
    request.range = range;
    return Checked(request, target);
}

std::unique_ptr<web::EventFeed> ApiFixture::Follow(const std::string& target, const std::string& lastEventId) {
    web::Request request = RequestOf(web::Method::Get, target);
    request.lastEventId = lastEventId;
    web::Response response = Handle(request);
    EXPECT_EQ(response.status, 200U);
    auto* const feed = std::get_if<std::unique_ptr<web::EventFeed>>(&response.body);
    return feed == nullptr ? nullptr : std::move(*feed);
}

void ApiFixture::OnHostThread(const std::function<void()>& change) {
    nextChange = change;
    EXPECT_EQ(Get("/api/v1/scenarios").status, 200U);
}

std::string ApiFixture::Await(web::EventFeed& feed, const std::string& part) {
    const test_support::Deadline deadline("a text with " + part);
    std::mutex mutex;
    std::condition_variable changed;
    bool hasNews = true;
    feed.OnNews([&] {
        const std::lock_guard lock(mutex);
        hasNews = true;
        changed.notify_all();
    });
    for (;;) {
        {
            std::unique_lock lock(mutex);
            changed.wait(lock, [&] { return std::exchange(hasNews, false); });
        }
        while (const auto text = feed.Next()) {
            if (text->find(part) != std::string::npos) {
                feed.OnNews(nullptr);
                return *text;
            }
        }
    }
}

std::wstring ApiFixture::OutputDirectory(std::int32_t number) const {
    return directory / (L"out" + std::to_wstring(number));
}

std::wstring ApiFixture::WorkDirectory(std::int32_t number) const {
    return directory / (L"work" + std::to_wstring(number));
}

ListedJob ApiFixture::JobWithFiles(std::int32_t number, JobStatus status) {
    ListedJob job = Job(number, L"part.stl", status);
    job.outputDir = OutputDirectory(number);
    job.workDir = WorkDirectory(number);
    EXPECT_TRUE(platform::EnsureDirectory(job.outputDir));
    EXPECT_TRUE(platform::EnsureDirectory(job.workDir));
    run_protocol::RunScenarioInfo info;
    info.jobId = job.id;
    info.outputFolder = job.outputDir;
    info.workDir = job.workDir;
    EXPECT_TRUE(
        run_protocol::WriteFile(run_protocol::SerializeRunScenarioInfo(info), run_protocol::RunInfoPath(job.workDir)));
    return job;
}
