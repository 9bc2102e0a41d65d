#include <cstdint>
#include <string>
#include <vector>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/Messages.h"
#include "formats/ProcessAnswer.h"
#include "formats/json/SchedulingLayouts.h"
#include "formats/json/Writing.h"
#include "fuzz/support/Before.h"
#include "fuzz/support/ByteSource.h"
#include "fuzz/support/Require.h"
#include "text/Hexadecimal.h"
#include "text/Text.h"

namespace {

template <typename Value>
bool Read(const std::wstring& text, Value& value) {
    return messages::DeserializeContent(text, value);
}

/// A text accepted as `Value` is written and read back equal; a refused one leaves the output unchanged. `before`: any
/// value of this type.
template <typename Value>
void CheckText(const std::wstring& text, const Value& before) {
    Value output = before;
    Value value{};
    if (!Read(text, output)) {
        fuzz::Require(output == before, "a refused message leaves the output as it was");
        return;
    }
    fuzz::Require(Read(text, value), "a message is read the same each time");
    Value again{};
    fuzz::Require(Read(json::WriteEnvelope(L"Again", value), again) && again == value,
                  "a message is read as it was written");
}

template <typename Value>
void CheckWritten(const std::wstring& text, const Value& value) {
    Value read{};
    fuzz::Require(Read(text, read) && read == value, "a record is read as it was written");
}

/// Parsed only: a process with this number may exist.
void CheckProcessAnswer(const std::wstring& text) {
    process_answer::ProcessAnswer answer;
    std::wstring problem;
    if (!process_answer::Parse(text, answer, problem)) {
        fuzz::Require(!answer.handle && !answer.id, "a refused answer leaves the output as it was");
        return;
    }
    const std::optional<std::uint64_t> number = text::ReadHandle(answer.handle.value_or(std::wstring()));
    fuzz::Require(!number || text::ReadHandle(text::HandleText(*number)) == number,
                  "a process handle is read as it was written");
}

void CheckTexts(const std::wstring& text) {
    const RecordMaker before = fuzz::Before();
    CheckProcessAnswer(text);
    CheckText<std::vector<JobListInfo>>(text, {before.Job()});
    CheckText<std::vector<ListedJob>>(text, {before.Job()});
    CheckText<JobsEdit>(text, {});
    CheckText<QueueState>(text, {true});
    CheckText<JobsQuery>(text, {{L"before"}, 7, 7});
    CheckText<JobEnqueueResult>(text, before.Result());
    CheckText<std::vector<JobStatusInfo>>(text, {before.Status()});
    CheckText<std::vector<ScenarioInfo>>(text, {before.Scenario()});
    CheckText<std::vector<ScenarioParameterSetInfo>>(text, {before.ParameterSet()});
    CheckText<std::vector<std::wstring>>(text, {before.text()});
    CheckText<std::wstring>(text, before.text());
    CheckText<ScheduledRequest>(text, before.Request());
}

/// Names and values of any content.
void CheckRecords(fuzz::ByteSource& source) {
    const RecordMaker make = source.Records();
    const std::wstring name = source.Text();
    const std::vector<JobListInfo> jobs = {make.Job()};
    CheckWritten(ControllerCSWrapper::Serialize(name, jobs), jobs);
    const ScheduledRequest request(make.Request());
    CheckWritten(messages::Serialize(name, request), request);
    const JobEnqueueResult result = make.Result();
    CheckWritten(messages::Serialize(name, result), result);
    const std::vector<JobStatusInfo> statuses = {make.Status(), make.Status()};
    CheckWritten(messages::Serialize(name, statuses), statuses);
    const std::vector<ScenarioInfo> scenarios = {make.Scenario()};
    CheckWritten(messages::Serialize(name, scenarios), scenarios);
    const std::vector<ScenarioParameterSetInfo> sets = {make.ParameterSet()};
    CheckWritten(messages::Serialize(name, sets), sets);
    const std::vector<std::wstring> texts = source.Texts();
    CheckWritten(ControllerCSWrapper::Serialize(name, texts), texts);
    const std::wstring text = source.Text();
    CheckWritten(messages::Serialize(name, text), text);
}

} // namespace

/// Reads the input as each kind of message between front end, host and function module, then writes messages made from
/// it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::BytesOf(data, size);
    CheckTexts(text::FromUtf8(bytes));
    fuzz::ByteSource source(bytes);
    CheckRecords(source);
    return 0;
}
