#pragma once

#include <string>

/// The names of jobs on the cluster: "controller-LIST-HOST-JOB-ATTEMPT". A name is used once.
namespace slurm {

/// The beginning of the names of all jobs from one job list on one machine.
std::wstring NamePrefix(const std::wstring& machine, const std::wstring& jobListFile);

/// A text that no other call returns: 8 hexadecimal digits.
std::wstring NewNamePart();

/// `host` is a `NewNamePart` of the host's process. A further one is added for the attempt.
std::wstring NewJobName(const std::wstring& prefix, const std::wstring& host, const std::wstring& jobId);

/// True if `name` is a job of the list with this prefix, and not of this host's process.
bool IsOfEarlierHost(const std::wstring& name, const std::wstring& prefix, const std::wstring& host);

/// True for the format of these names. Others could form a path to another file, or an option.
bool IsJobName(const std::wstring& name);

} // namespace slurm
