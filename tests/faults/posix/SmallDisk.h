#pragma once

#include <string>

/// A file system of its own of one megabyte, seen only in the mount name space of this process, which must be its own
/// (`IsInOwnNameSpace`).
class SmallDisk {
public:
    /// Mounts it at the directory `path`, which is made.
    explicit SmallDisk(const std::wstring& path);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    /// Why there is none on this machine; empty when there is.
    const std::string& Problem() const { return problem; }

    /// Leaves not one byte free.
    void Fill() const;
    /// Leaves `bytes` free.
    void FillBut(std::size_t bytes) const;
    void Free() const;

    /// Whatever is opened from now on can be read only.
    void MakeReadOnly();
    void MakeWritable();

private:
    void Note(const char* step, int result);

    std::wstring path;
    std::string nativePath;
    std::string problem;
    int mounts = 0;
};
