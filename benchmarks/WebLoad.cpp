// Measures a running server of the web page: small requests on one connection and on eight, and the time from a change
// in the host until a client of the event stream has it. Prints "web_requests_1 SECONDS" and so on. Usage: web_load
// LINK

#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "Timing.h"
#include "kit/web/SignedInBrowser.h"

namespace {

using Clock = std::chrono::steady_clock;
using test_support::RawClient;
using test_support::SignedInBrowser;

constexpr int requests = 4000;
constexpr int changes = 20;
/// Longer than the server collects changes for one event.
constexpr std::chrono::milliseconds betweenChanges{300};

void AskRepeatedly(const SignedInBrowser& browser, int count) {
    RawClient client(browser.Port());
    const std::string request = browser.Request("GET", "/api/v1/queue");
    for (int number = 0; number < count; ++number) {
        if (!client.Send(request) || client.Receive().status != 200) {
            throw std::runtime_error("a request has failed");
        }
    }
}

/// The time of one request, all connections together.
double SecondsPerRequest(const SignedInBrowser& browser, int connections) {
    return SecondsFor([&] {
               std::vector<std::thread> clients;
               for (int number = 0; number < connections; ++number) {
                   clients.emplace_back([&] { AskRepeatedly(browser, requests / connections); });
               }
               for (std::thread& client : clients) {
                   client.join();
               }
           }) /
           requests;
}

double MedianUntilEvent(const SignedInBrowser& browser) {
    RawClient events(browser.Port());
    events.Send(browser.Request("GET", "/api/v1/events"));
    events.ReceiveUntil("event: reset");
    std::vector<double> seconds;
    for (int number = 0; number < changes; ++number) {
        std::this_thread::sleep_for(betweenChanges);
        const std::string paused = number % 2 == 0 ? "\"paused\":true" : "\"paused\":false";
        seconds.push_back(SecondsFor([&] {
            browser.Change("PUT", "/api/v1/queue", "{" + paused + "}");
            events.ReceiveUntil(paused);
        }));
    }
    return Median(std::move(seconds));
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "Usage: web_load LINK\n");
        return 2;
    }
    const SignedInBrowser browser(argv[1]);
    // The server has the whole list when it has answered this.
    if (browser.Get("/api/v1/jobs?limit=1").status != 200) {
        std::fprintf(stderr, "web_load: the server does not list the jobs\n");
        return 1;
    }
    for (const int connections : {1, 8}) {
        std::printf("web_requests_%d %.9f\n", connections, SecondsPerRequest(browser, connections));
    }
    std::printf("web_event %.6f\n", MedianUntilEvent(browser));
}
