#pragma once

#include <string>

/// A private file system of one megabyte in the mount name space of this process, which must be its own
/// (`IsInOwnNameSpace`).
class SmallDisk {
public:
    /// Creates the directory `path` and mounts the file system there.
    explicit SmallDisk(const std::wstring& path);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    /// Why there is none on this machine; empty if there is one.
    const std::string& Problem() const { return problem; }

    /// Leaves no byte free.
    void Fill() const;
    /// Leaves `bytes` free.
    void FillBut(std::size_t bytes) const;
    void Free() const;

    /// Files opened after this are read-only.
    void MakeReadOnly();
    void MakeWritable();

private:
    void Note(const char* step, int result);

    std::wstring path;
    std::string nativePath;
    std::string problem;
    int mounts = 0;
};
