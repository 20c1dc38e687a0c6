#pragma once

#include <cerrno>
#include <span>
#include <unistd.h>
#include <utility>

namespace Tavrin {

/// Owns one file descriptor and closes it at the end.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int number)
        : m_number(number)
    {
    }
    FileDescriptor(FileDescriptor&& other) noexcept
        : m_number(std::exchange(other.m_number, -1))
    {
    }
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() { closeNow(); }

    bool isOpen() const { return m_number >= 0; }
    /// The number, or -1 when there is none; it stays ours.
    int number() const { return m_number; }

    /// Writes all of it, waiting where the descriptor does. False, with the reason in errno, if that is not
    /// possible.
    bool write(std::span<const char> bytes) const
    {
        while (!bytes.empty()) {
            const ssize_t count = ::write(m_number, bytes.data(), bytes.size());
            if (count < 0 && errno == EINTR)
                continue;
            if (count < 0)
                return false;
            bytes = bytes.subspan(static_cast<std::size_t>(count));
        }
        return true;
    }

    /// Closes it. False if closing reports an error that writing did not (a network file system's quota).
    bool closeNow()
    {
        const int number = std::exchange(m_number, -1);
        return number < 0 || close(number) == 0;
    }

private:
    int m_number = -1;
};

} // namespace Tavrin
