#include "Fetch/TestAuthority.h"

#include <QSslConfiguration>

namespace Tavrin {

void trustTestAuthority()
{
    const QString file = qEnvironmentVariable("TAVRIN_TEST_AUTHORITY");
    if (file.isEmpty())
        return;
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.addCaCertificates(file);
    QSslConfiguration::setDefaultConfiguration(configuration);
}

} // namespace Tavrin
