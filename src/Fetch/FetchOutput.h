#pragma once

#include "Core/Support/FileDescriptor.h"

#include <QByteArray>

namespace Tavrin {

/// The pipe to whoever started this process. Standard output itself leads nowhere from then on, so that
/// nothing a library prints mixes with the answer and no child of a library keeps the pipe open.
class FetchOutput {
public:
    /// Takes standard output over.
    FetchOutput();

    /// Ends this process as soon as the pipe's reader is gone, whatever the main thread is blocked in.
    void endWithReader() const;

    /// Writes all of it; false if that is not possible.
    bool write(const QByteArray& bytes) const;

private:
    FileDescriptor m_pipe;
};

} // namespace Tavrin
