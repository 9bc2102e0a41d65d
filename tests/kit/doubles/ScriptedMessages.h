#pragma once

#include "CommonControllerLib/JobRecords.h"
#include "CommonControllerLib/ScenarioRecords.h"

#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

/// The contents of messages, jobs files and string resources in a test. A payload or file is a plain word whose content
/// is scripted here; all others are unreadable.
class ScriptedMessages {
public:
    /// Scripts the content of a payload.
    template <typename Value>
    void Add(const std::wstring& payload, Value value) {
        std::get<Values<Value>>(payloads)[payload] = std::move(value);
    }

    /// The content of a payload as this type; null if it has none.
    template <typename Value>
    const Value* Find(const std::wstring& payload) const {
        const auto& values = std::get<Values<Value>>(payloads);
        const auto found = values.find(payload);
        return found == values.end() ? nullptr : &found->second;
    }

    /// By path.
    std::map<std::wstring, std::vector<EnqueueJobsInfo>> jobsFiles;
    std::map<std::wstring, std::wstring> jsonFiles;
    /// The text of a member, by JSON text (first) and member name (second).
    std::map<std::pair<std::wstring, std::wstring>, std::wstring> stringResources;
    /// The number of reads of string resources to refuse first.
    int stringResourceRefusals = 0;
    /// Identifiers are "guid 1", "guid 2" and so on.
    int guidCount = 0;

private:
    template <typename Value>
    using Values = std::map<std::wstring, Value>;

    std::tuple<Values<std::vector<JobListInfo>>, Values<JobEnqueueResult>, Values<std::vector<JobStatusInfo>>,
               Values<std::vector<ScenarioInfo>>, Values<std::vector<ScenarioParameterSetInfo>>,
               Values<std::vector<std::wstring>>, Values<std::wstring>>
        payloads;
};
