// Entry of every C++ test: a Qt event loop is there, and an unexpected warning fails the test.
#ifdef TAVRIN_TEST_WIDGETS
#include <QApplication>
using Application = QApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif
#include <gmock/gmock.h>

#include <cstdio>

namespace {

void failOnWarning(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message)
{
    std::fprintf(stderr, "%s\n", qPrintable(message));
    if (type == QtWarningMsg || type == QtCriticalMsg)
        ADD_FAILURE() << "unexpected warning: " << qPrintable(message);
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    Application application(argc, argv);
    qInstallMessageHandler(failOnWarning);
    return RUN_ALL_TESTS();
}
