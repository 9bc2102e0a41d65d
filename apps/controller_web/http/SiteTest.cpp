#include "controller_web/http/Site.h"

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "controller_web/http/ErrorResponse.h"
#include "kit/TemporaryDirectory.h"

namespace {

constexpr std::array<web::Asset, 1> page = {{{"index.html", "<p>", "", "1a"}}};

class FailingHandler final : public web::Handler {
public:
    web::Response Handle(const web::Request& /*request*/) override { throw std::runtime_error("no disk"); }
};

class SiteTest : public testing::Test {
protected:
    explicit SiteTest(const std::string& publicAddress = "", bool isReadOnly = false)
        : options{8080,
                  web::ReadPublicAddress(publicAddress),
                  isReadOnly,
                  directory / L"links",
                  directory / L"arriving",
                  [this] { return now; }},
          site(options, web::Assets(page), handler) {}

    static web::RequestHead Request(const std::string& method, const std::string& target) {
        web::RequestHead head{method, target};
        head.hosts = {"127.0.0.1:8080"};
        if (method != "GET" && method != "HEAD") {
            head.origins = {"http://127.0.0.1:8080"};
            head.contentType = "application/json";
        }
        return head;
    }

    web::RequestHead SignedIn(const std::string& method, const std::string& target) {
        web::RequestHead head = Request(method, target);
        head.cookie = Cookie();
        return head;
    }

    /// The name and the secret of a new session.
    std::string Cookie() {
        const web::Response response = Redeem(NewLink());
        for (const auto& [name, value] : response.headers) {
            if (name == "Set-Cookie") {
                return value.substr(0, value.find(';'));
            }
        }
        return "";
    }

    std::string NewLink() const {
        std::string secret;
        EXPECT_TRUE(web::OneTimeLinks(options.linkDirectory, options.now).Make(secret));
        return secret;
    }

    web::Response Redeem(const std::string& secret) {
        return std::move(*site.Admit(Request("GET", "/login?token=" + secret)).answer);
    }

    /// 0: admitted to the handler.
    unsigned Status(const web::RequestHead& head) {
        const web::Admission admission = site.Admit(head);
        return admission.answer ? admission.answer->status : 0;
    }

    const TemporaryDirectory directory;
    std::int64_t now = 1'000'000;
    FailingHandler handler;
    web::SiteOptions options;
    web::Site site;
};

TEST_F(SiteTest, WithoutASessionNothingIsGiven) {
    for (const char* const target : {"/", "/index.html", "/api/v1/jobs", "/metrics", "/nothing"}) {
        EXPECT_EQ(Status(Request("GET", target)), 401U) << target;
    }
    EXPECT_EQ(Status(Request("POST", "/api/v1/jobs")), 401U);
}

TEST_F(SiteTest, AnotherServersCookieOpensNothing) {
    web::RequestHead head = Request("GET", "/");
    const std::string cookie = Cookie();
    head.cookie = "controller_session_8081" + cookie.substr(cookie.find('='));
    EXPECT_EQ(Status(head), 401U);
}

TEST_F(SiteTest, ALinkSignsOneBrowserIn) {
    const std::string secret = NewLink();
    const web::Response first = Redeem(secret);
    EXPECT_EQ(first.status, 303U);
    EXPECT_EQ(first.headers[0], (std::pair<std::string, std::string>{"Location", "/"}));
    EXPECT_TRUE(first.headers[1].second.ends_with("; Path=/; HttpOnly; SameSite=Strict"));
    EXPECT_EQ(Redeem(secret).status, 401U);
}

TEST_F(SiteTest, AWrongLinkSignsNobodyIn) {
    EXPECT_EQ(Redeem("").status, 401U);
    EXPECT_EQ(Redeem(std::string(64, 'a')).status, 401U);
    EXPECT_EQ(Status(Request("GET", "/login")), 401U);
}

TEST_F(SiteTest, HeadDoesNotUseALinkUp) {
    const std::string secret = NewLink();
    EXPECT_EQ(Status(Request("HEAD", "/login?token=" + secret)), 405U);
    EXPECT_EQ(Redeem(secret).status, 303U);
}

TEST_F(SiteTest, ASignedInBrowserGetsPageAndInterface) {
    EXPECT_EQ(Status(SignedIn("GET", "/")), 200U);
    EXPECT_EQ(Status(SignedIn("HEAD", "/")), 200U);
    EXPECT_EQ(Status(SignedIn("GET", "/api/v1/jobs")), 0U);
    EXPECT_EQ(Status(SignedIn("GET", "/metrics")), 0U);
    EXPECT_EQ(Status(SignedIn("POST", "/api/v1/jobs")), 0U);
    EXPECT_EQ(Status(SignedIn("GET", "/nothing")), 404U);
    EXPECT_EQ(Status(SignedIn("POST", "/")), 405U);
}

TEST_F(SiteTest, OnlyOneHostOfItsOwnIsServed) {
    for (const std::vector<std::string>& hosts :
         std::vector<std::vector<std::string>>{{},
                                               {"evil.example"},
                                               {"evil.example:8080"},
                                               {"127.0.0.1"},
                                               {"127.0.0.1:8081"},
                                               {"127.0.0.1:8080", "127.0.0.1:8080"},
                                               {"127.0.0.1:8080", "evil.example"}}) {
        web::RequestHead head = SignedIn("GET", "/");
        head.hosts = hosts;
        EXPECT_EQ(Status(head), 421U) << testing::PrintToString(hosts);
    }
    web::RequestHead head = SignedIn("GET", "/");
    head.hosts = {"localhost:8080"};
    EXPECT_EQ(Status(head), 200U);
}

TEST_F(SiteTest, PagesOfOtherSitesAreRefused) {
    web::RequestHead head = SignedIn("GET", "/api/v1/jobs");
    for (const char* const sender : {"cross-site", "same-site", "unheard-of"}) {
        head.fetchSite = sender;
        EXPECT_EQ(Status(head), 403U) << sender;
    }
    for (const char* const sender : {"", "same-origin", "none"}) {
        head.fetchSite = sender;
        EXPECT_EQ(Status(head), 0U) << sender;
    }
}

TEST_F(SiteTest, AChangeNeedsItsOwnOrigin) {
    for (const char* const method : {"POST", "PUT", "DELETE"}) {
        web::RequestHead head = SignedIn(method, "/api/v1/jobs");
        head.origins = {};
        EXPECT_EQ(Status(head), 403U) << method;
        for (const char* const origin : {"null", "", "http://evil.example", "https://127.0.0.1:8080",
                                         "http://127.0.0.1:8081", "http://127.0.0.1", "http://127.0.0.1:8080/"}) {
            head.origins = {origin};
            EXPECT_EQ(Status(head), 403U) << method << origin;
        }
        head.origins = {"http://127.0.0.1:8080", "http://127.0.0.1:8080"};
        EXPECT_EQ(Status(head), 403U) << method;
    }
}

TEST_F(SiteTest, AForeignOriginMayNotEvenRead) {
    web::RequestHead head = SignedIn("GET", "/api/v1/jobs");
    head.origins = {"http://evil.example"};
    EXPECT_EQ(Status(head), 403U);
}

TEST_F(SiteTest, UnknownMethodsAreRefused) {
    for (const char* const method : {"PATCH", "OPTIONS", "TRACE", "CONNECT", "get", ""}) {
        EXPECT_EQ(Status(SignedIn(method, "/api/v1/jobs")), 405U) << method;
    }
}

TEST_F(SiteTest, WhatAFormCanSendIsRefused) {
    for (const char* const type : {"", "text/plain", "application/x-www-form-urlencoded", "multipart/form-data"}) {
        web::RequestHead head = SignedIn("POST", "/api/v1/jobs");
        head.contentType = type;
        EXPECT_EQ(Status(head), 415U) << type;
    }
}

TEST_F(SiteTest, AnUploadIsBytesAndMayBeLarger) {
    web::RequestHead head = SignedIn("POST", "/api/v1/uploads?name=part.stl");
    EXPECT_EQ(Status(head), 415U);
    head.contentType = "application/octet-stream";
    EXPECT_EQ(site.Admit(head).bodyLimit, web::Site::uploadLimit);
    EXPECT_TRUE(site.Admit(head).isUpload);
    const web::Admission other = site.Admit(SignedIn("POST", "/api/v1/jobs"));
    EXPECT_EQ(other.bodyLimit, web::Site::jsonLimit);
    EXPECT_FALSE(other.isUpload);
}

TEST_F(SiteTest, AnAddressThatCannotBeReadIsRefused) {
    EXPECT_EQ(Status(SignedIn("GET", "/api/%00")), 400U);
    EXPECT_EQ(Status(SignedIn("GET", "http://127.0.0.1:8080/")), 400U);
}

TEST_F(SiteTest, TheHandlerGetsTheDecodedRequest) {
    web::RequestHead head = SignedIn("GET", "/api/v1/jobs/a%2Fb/log?follow=1");
    head.range = "bytes=0-1";
    head.lastEventId = "x-1";
    const web::Admission admission = site.Admit(head);
    EXPECT_EQ(admission.request.path, (std::vector<std::string>{"api", "v1", "jobs", "a/b", "log"}));
    EXPECT_EQ(admission.request.query.find("follow")->second, "1");
    EXPECT_EQ(admission.request.range, "bytes=0-1");
    EXPECT_EQ(admission.request.lastEventId, "x-1");
}

TEST_F(SiteTest, AHandlerThatFailsHasAnswered500) {
    EXPECT_EQ(site.Handle({}).status, 500U);
}

TEST_F(SiteTest, ItsAddressIsThatOfThisMachine) {
    EXPECT_EQ(site.Address(), "http://127.0.0.1:8080/");
}

class SiteTest_ReadOnly : public SiteTest {
protected:
    SiteTest_ReadOnly() : SiteTest("", true) {}
};

TEST_F(SiteTest_ReadOnly, NothingIsChanged) {
    for (const char* const method : {"POST", "PUT", "DELETE"}) {
        EXPECT_EQ(Status(SignedIn(method, "/api/v1/jobs")), 403U) << method;
    }
    EXPECT_EQ(Status(SignedIn("GET", "/api/v1/jobs")), 0U);
}

class SiteTest_Proxy : public SiteTest {
protected:
    SiteTest_Proxy() : SiteTest("https://jobs.example.org/alice/") {}
};

TEST_F(SiteTest_Proxy, ItsNameIsAnOwnHostAndOrigin) {
    web::RequestHead head = SignedIn("POST", "/api/v1/jobs");
    head.hosts = {"jobs.example.org"};
    head.origins = {"https://jobs.example.org"};
    EXPECT_EQ(Status(head), 0U);
    head.hosts = {"jobs.example.com"};
    EXPECT_EQ(Status(head), 421U);
}

TEST_F(SiteTest_Proxy, TheBasePathMayBeRemovedOrNot) {
    EXPECT_EQ(Status(SignedIn("GET", "/alice/")), 200U);
    EXPECT_EQ(Status(SignedIn("GET", "/")), 200U);
    EXPECT_EQ(Status(SignedIn("GET", "/alice/index.html")), 200U);
    EXPECT_EQ(site.Admit(SignedIn("GET", "/alice/api/v1/queue")).request.path,
              (std::vector<std::string>{"api", "v1", "queue"}));
    EXPECT_EQ(Status(SignedIn("GET", "/bob/")), 404U);
}

TEST_F(SiteTest_Proxy, TheCookieIsForItsPathAndForHttpsOnly) {
    const web::Response response = Redeem(NewLink());
    EXPECT_EQ(response.headers[0].second, "/alice/");
    EXPECT_TRUE(response.headers[1].second.ends_with("; Path=/alice/; HttpOnly; SameSite=Strict; Secure"));
    EXPECT_EQ(site.Address(), "https://jobs.example.org/alice/");
}

TEST(SiteTest_Secure, EveryAnswerIsProtected) {
    web::Response response = web::ErrorResponse(404, "not_found", "x");
    web::Secure(response);
    for (const char* const name :
         {"Content-Security-Policy", "X-Content-Type-Options", "Referrer-Policy", "Cache-Control"}) {
        EXPECT_EQ(std::count_if(response.headers.begin(), response.headers.end(),
                                [name](const auto& header) { return header.first == name; }),
                  1)
            << name;
    }
}

TEST(SiteTest_Secure, AHandlersOwnPolicyStays) {
    web::Response response = web::TextResponse(200, "text/html", "x");
    response.headers.emplace_back("Content-Security-Policy", "sandbox");
    web::Secure(response);
    EXPECT_EQ(std::count_if(response.headers.begin(), response.headers.end(),
                            [](const auto& header) { return header.first == "Content-Security-Policy"; }),
              1);
}

TEST(SiteTest_Secure, AHeaderWithALineBreakIsNotSent) {
    web::Response response = web::TextResponse(200, "text/plain", "x");
    response.headers.emplace_back("Content-Disposition", "a\r\nSet-Cookie: b");
    web::Secure(response);
    EXPECT_EQ(response.status, 500U);
    for (const auto& [name, value] : response.headers) {
        EXPECT_NE(name, "Content-Disposition");
    }
}

TEST(SiteTest_Secure, AnErrorIsJsonWhateverItsMessage) {
    const web::Response response = web::ErrorResponse(400, "bad", "\"\n\xff");
    EXPECT_EQ(*std::get<web::Response::Text>(response.body),
              "{\"version\":1,\"error\":{\"code\":\"bad\",\"message\":\"\\\"\\n\\udcff\"}}");
}

} // namespace
