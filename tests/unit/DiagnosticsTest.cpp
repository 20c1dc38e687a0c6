#include "Core/Support/Diagnostics.h"

#include "support/CapturedOutput.h"

#include <QElapsedTimer>
#include <array>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace Tavrin {
namespace {

TEST(PrintedLines, AreOneLineEach)
{
    Testing::CapturedOutput output;
    Diagnostics::printLine(QStringLiteral("một\nhai\r\u2028ba\u0007"));
    Diagnostics::printLine(QString(10000, u'ệ'));
    const QStringList lines = output.lines();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0], QStringLiteral("một hai  ba "));
    EXPECT_EQ(lines[1], QString(10000, u'ệ'));
}

TEST(PrintedLines, NeverWaitForAReader)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    const int kept = dup(STDOUT_FILENO);
    dup2(ends[1], STDOUT_FILENO);
    for (int line = 0; line < 1000; ++line)
        Diagnostics::printLine(QString(1000, u'x'));
    dup2(kept, STDOUT_FILENO);
    for (const int descriptor : {ends[0], ends[1], kept})
        close(descriptor);
    SUCCEED() << "a full pipe must not have held us up";
}

} // namespace
} // namespace Tavrin
