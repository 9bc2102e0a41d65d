#pragma once

#include "controller_web/api/Api.h"
#include "kit/controller_web/AnswerSchemas.h"
#include "kit/front_end/CommandContextFixture.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// What a client of the interface gets.
struct Answer {
    unsigned status = 0;
    std::map<std::string, std::string> headers;
    std::string body;
    /// Reading the body has failed before its end.
    bool isBroken = false;

    bool Has(const std::string& part) const { return body.find(part) != std::string::npos; }
};

/// The interface with a scripted host. Each answer is compared with the description of the interface. The host is used
/// by the thread of the interface: tests change it before the first request, or by `OnHostThread`.
class ApiFixture : public CommandContextFixture {
protected:
    ApiFixture();
    ~ApiFixture() override;

    Answer Get(const std::string& target) { return Send(web::Method::Get, target, {}); }
    Answer Post(const std::string& target, const std::string& body) { return Send(web::Method::Post, target, body); }
    Answer Put(const std::string& target, const std::string& body) { return Send(web::Method::Put, target, body); }
    Answer Delete(const std::string& target) { return Send(web::Method::Delete, target, {}); }
    /// A request without a comparison of the answer; bodies that are feeds stay in `response`.
    web::Response Handle(const web::Request& request);
    Answer GetRange(const std::string& target, const std::string& range);
    std::unique_ptr<web::EventFeed> Follow(const std::string& target, const std::string& lastEventId = {});

    /// Has the scripted host do something, between two requests.
    void OnHostThread(const std::function<void()>& change);
    /// Waits for a text of the feed that contains `part`, and returns it.
    static std::string Await(web::EventFeed& feed, const std::string& part);

    /// A job whose directories exist, with an output directory of its own.
    ListedJob JobWithFiles(std::int32_t number, JobStatus status);
    std::wstring OutputDirectory(std::int32_t number) const;
    std::wstring WorkDirectory(std::int32_t number) const;

    /// A request of this method and target, with its parts decoded as the server does.
    static web::Request RequestOf(web::Method method, const std::string& target, const std::string& body = {});

    std::vector<std::wstring> inputDirectories;
    AnswerSchemas schemas;

private:
    Answer Send(web::Method method, const std::string& target, const std::string& body);
    Answer Checked(const web::Request& request, const std::string& target);

    std::function<void()> nextChange;
    std::unique_ptr<web::Handler> api;
};
