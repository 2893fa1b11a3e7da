// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <unistd.h>

namespace Corvane::Command
{

/// Owns a file descriptor, or none.
class FileHandle
{
public:
    FileHandle() = default;
    explicit FileHandle(int descriptor) : m_descriptor(descriptor) {}
    FileHandle(FileHandle&& other) noexcept : m_descriptor(other.Release()) {}
    FileHandle& operator=(FileHandle&& other) noexcept
    {
        Close();
        m_descriptor = other.Release();
        return *this;
    }
    ~FileHandle() { Close(); }

    bool IsOpen() const { return m_descriptor >= 0; }
    int Get() const { return m_descriptor; }
    /// Gives the descriptor away.
    int Release()
    {
        const int descriptor = m_descriptor;
        m_descriptor = -1;
        return descriptor;
    }

private:
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;

    void Close()
    {
        if (IsOpen())
            close(Release());
    }

    int m_descriptor = -1;
};

} // namespace Corvane::Command
