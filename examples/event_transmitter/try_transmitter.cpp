/// Sends a question through an event transmitter, and its answer back. Usage: try_transmitter MODULE

#include "CommonControllerLib/CallbackFunctor.h"
#include "CommonControllerLib/EventTransmitter.h"
#include "CommonControllerLib/EventTransmitterManager.h"

#include <cstdio>
#include <string>

namespace {

/// The engine's side: answers.
class AnswerQuestion final : public CallbackFunctor {
public:
    explicit AnswerQuestion(EventTransmitter& engineEnd) : engine(engineEnd) {}
    bool operator()(const std::wstring& payload) override { return engine.SendEvent(L"Answer", L"Re: " + payload); }

private:
    EventTransmitter& engine;
};

/// The front end's side: keeps what it received.
class KeepAnswer final : public CallbackFunctor {
public:
    bool operator()(const std::wstring& payload) override {
        answer = payload;
        return true;
    }
    std::wstring answer;
};

bool AskAndAnswer(EventTransmitter& engine, EventTransmitter& frontEnd) {
    AnswerQuestion answerQuestion(engine);
    KeepAnswer keepAnswer;
    engine.AddEventHandler(L"Question", &answerQuestion);
    frontEnd.AddEventHandler(L"Answer", &keepAnswer);
    const bool isSent = frontEnd.SendEvent(L"Question", L"six times seven");
    engine.AddEventHandler(L"Question", nullptr);
    frontEnd.AddEventHandler(L"Answer", nullptr);
    return isSent && keepAnswer.answer == L"Re: six times seven" && !frontEnd.SendEvent(L"Question", L"once more");
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::puts("Usage: try_transmitter MODULE");
        return 2;
    }
    const std::string path = arguments[1];
    EventTransmitterManager module(std::wstring(path.begin(), path.end()));
    EventTransmitter* const engine = module.GetEventTransmitter(L"engine");
    EventTransmitter* const frontEnd = module.GetEventTransmitter(L"front end");
    if (engine == nullptr || frontEnd == nullptr) {
        std::puts("The module cannot be loaded, or offers no event transmitter.");
        return 1;
    }
    const bool isAnswered = AskAndAnswer(*engine, *frontEnd);
    std::puts(isAnswered ? "The question was answered." : "The question was not answered.");
    return isAnswered ? 0 : 1;
}
