#pragma once

#include <QStringList>
#include <gtest/gtest.h>

namespace Tavrin::Testing {

/// Collects what is printed to standard output while it lives.
class CapturedOutput {
public:
    CapturedOutput() { testing::internal::CaptureStdout(); }
    ~CapturedOutput()
    {
        if (m_isCapturing)
            testing::internal::GetCapturedStdout();
    }
    CapturedOutput(const CapturedOutput&) = delete;
    CapturedOutput& operator=(const CapturedOutput&) = delete;

    /// The lines so far; ends the capture.
    QStringList lines()
    {
        m_isCapturing = false;
        const QString text = QString::fromStdString(testing::internal::GetCapturedStdout());
        return text.split(u'\n', Qt::SkipEmptyParts);
    }

private:
    bool m_isCapturing = true;
};

} // namespace Tavrin::Testing
