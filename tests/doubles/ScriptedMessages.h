#pragma once

#include "CommonControllerLib/JobRecords.h"
#include "CommonControllerLib/ScenarioRecords.h"

#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

/// What the messages, jobs files and string resources of a test hold. A payload or file is a plain word, and what it
/// holds is scripted here; any other is unreadable.
class ScriptedMessages {
public:
    /// Scripts what a payload holds.
    template <typename Value>
    void Add(const std::wstring& payload, Value value) {
        std::get<Values<Value>>(payloads)[payload] = std::move(value);
    }

    /// What a payload holds as a value of this type; null when it holds none.
    template <typename Value>
    const Value* Find(const std::wstring& payload) const {
        const auto& values = std::get<Values<Value>>(payloads);
        const auto found = values.find(payload);
        return found == values.end() ? nullptr : &found->second;
    }

    /// By path.
    std::map<std::wstring, std::vector<EnqueueJobsInfo>> jobsFiles;
    std::map<std::wstring, std::wstring> jsonFiles;
    /// The member text of a JSON text (first) and a member name (second).
    std::map<std::pair<std::wstring, std::wstring>, std::wstring> stringResources;
    /// So many readings of string resources are refused first.
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
