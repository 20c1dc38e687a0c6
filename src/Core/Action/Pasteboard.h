#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

namespace Tavrin {

/// What the general pasteboard (the clipboard) holds: one thing, in the formats it is offered in.
struct PasteboardContents {
    struct Format {
        /// MIME type, as "text/html" or "image/png"; never plain text.
        QString type;
        QByteArray data;
        bool operator==(const Format&) const = default;
    };

    /// The plain text; absent if there is none.
    std::optional<QString> string;
    /// The formats beside the plain text, in the order in which they were offered.
    std::vector<Format> formats;

    bool operator==(const PasteboardContents&) const = default;
};

/// The general pasteboard. Main thread; nothing here waits for another program.
class Pasteboard {
public:
    enum class Detail { string, allFormats };
    /// What is there only for a moment is marked, so that clipboard managers leave it out.
    enum class Stay { lasting, passing };
    using ReadCompletion = std::function<void(PasteboardContents)>;

    virtual ~Pasteboard() = default;

    /// Reads what the pasteboard holds now: a write() that follows is not seen. The completion comes
    /// later, exactly once, and soon even if the program that put it there does not answer: then what it
    /// did not hand over is missing.
    virtual void read(Detail detail, ReadCompletion completion) = 0;

    /// Clears the pasteboard and puts these contents there. Whoever asks from now on gets them.
    virtual void write(PasteboardContents contents, Stay stay) = 0;
};

} // namespace Tavrin
