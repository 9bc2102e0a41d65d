#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The files in a job's work directory by which the waiter on this machine and the process on the node know of each
/// other. Each attempt to run the job has a name of its own (`JobName.h`).
namespace slurm {

/// How a run on the node ended.
struct NodeEnd {
    /// Exit code of `scenario_runner`.
    std::int32_t runnerExit = 0;
    /// False: the processes were ended because the attempt was given up.
    bool isWhole = true;

    bool operator==(const NodeEnd&) const = default;
};

/// Says which attempt may run, and changes while its waiter lives.
struct Lease {
    std::wstring name;
    std::string content;
};

class AttemptFiles {
public:
    AttemptFiles(std::wstring workDir, std::wstring name);

    const std::wstring& Name() const { return name; }

    // Written by the waiter. Return false on failure.
    [[nodiscard]] bool WriteLease(std::uint64_t count) const;
    // Written by the process on the node. Return false on failure.
    [[nodiscard]] bool WriteBeat(std::uint64_t count) const;
    /// Written once, when no process of the attempt is left; flushed to the disk.
    [[nodiscard]] bool WriteEnd(const NodeEnd& end) const;

    /// The lease of any attempt; nothing if there is none.
    [[nodiscard]] std::optional<Lease> ReadLease() const;
    /// Empty if there is none.
    std::string ReadBeat() const;
    [[nodiscard]] std::optional<NodeEnd> ReadEnd() const;

    /// The names of other attempts that have begun on a node and have not ended there.
    std::vector<std::wstring> OthersWithoutEnd() const;
    /// Removes the files of other attempts.
    void RemoveOthers() const;

private:
    std::vector<std::wstring> OthersWith(const std::wstring& beginning) const;
    std::wstring PathOf(const std::wstring& file) const;
    [[nodiscard]] bool Write(const std::wstring& file, const std::string& text, bool flush) const;

    std::wstring workDir;
    std::wstring name;
};

} // namespace slurm
