#pragma once

#include "CommonControllerLib/JobEntry.h"

#include <string>

/// A job whose process is a `ScriptedProcess`: it accepts only the answer `ScriptedProcess::Answer`.
template <class Entry = JobEntry>
class ScriptedJobEntry final : public Entry {
public:
    using Entry::Entry;

    bool OnEvaluateJobInputResult(const std::wstring& response) override {
        if (response.empty()) {
            return false;
        }
        this->SetProcessHandle(reinterpret_cast<void*>(std::stoull(response))); // NOLINT: a handle is no address
        return true;
    }
};

/// An engine of such jobs: a real one refuses processes unknown to the system.
template <class Engine>
class ScriptedEngine : public Engine {
public:
    using Engine::Engine;

protected:
    JobEntry* CreateNewJobEntry(const JobListInfo* info) override {
        return info == nullptr ? new ScriptedJobEntry<>() : new ScriptedJobEntry<>(*info);
    }
};
