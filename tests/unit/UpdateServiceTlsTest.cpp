#include "Fetch/ManifestRequest.h"
#include "support/UpdateCheck.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslKey>
#include <QTemporaryDir>

namespace Tavrin {

using namespace Qt::StringLiterals;
using namespace Testing;

namespace {

/// Makes a certificate for this alternative name that nobody else has signed.
QSslConfiguration makeServerIdentity(const QString& alternativeName)
{
    const QTemporaryDir folder;
    const QString keyFile = folder.filePath(u"key.pem"_s);
    const QString certificateFile = folder.filePath(u"certificate.pem"_s);
    QProcess openssl;
    openssl.start(u"openssl"_s,
        {u"req"_s, u"-x509"_s, u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s, u"ec_paramgen_curve:prime256v1"_s,
            u"-nodes"_s, u"-days"_s, u"2"_s, u"-subj"_s, u"/CN=Tavrin test"_s, u"-addext"_s,
            u"subjectAltName="_s + alternativeName, u"-keyout"_s, keyFile, u"-out"_s, certificateFile});
    EXPECT_TRUE(openssl.waitForFinished()) << openssl.errorString().toStdString();
    EXPECT_EQ(openssl.exitCode(), 0) << openssl.readAllStandardError().toStdString();

    QFile key(keyFile);
    EXPECT_TRUE(key.open(QIODevice::ReadOnly));
    QSslConfiguration identity = QSslConfiguration::defaultConfiguration();
    identity.setPrivateKey(QSslKey(&key, QSsl::Ec));
    identity.setLocalCertificateChain(QSslCertificate::fromPath(certificateFile));
    identity.setPeerVerifyMode(QSslSocket::VerifyNone);
    return identity;
}

class SecureCheck : public testing::Test {
protected:
    ~SecureCheck() override { QSslConfiguration::setDefaultConfiguration(usual); }

    static void trust(const QSslConfiguration& server)
    {
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setCaCertificates(server.localCertificateChain());
        QSslConfiguration::setDefaultConfiguration(configuration);
    }

    const QSslConfiguration usual = QSslConfiguration::defaultConfiguration();
};

HttpServer::Handler newer()
{
    return answering("200 OK", manifest(u"1.0.8"_s));
}

/// How the request itself ends. It runs in this process and not in the helper's, which trusts nobody but
/// those whom the system trusts.
ManifestAnswer answerFrom(const HttpServer& server)
{
    constexpr qint64 largestBody = 1024 * 1024;
    ManifestRequest request(server.address(), largestBody);
    std::optional<ManifestAnswer> result;
    QObject::connect(
        &request, &ManifestRequest::answered, [&](const ManifestAnswer& answer) { result = answer; });
    request.start();
    EXPECT_TRUE(waitFor([&] { return result.has_value(); }));
    return result.value_or(ManifestFailure{});
}

void expectBody(const ManifestAnswer& answer, const QByteArray& body)
{
    const auto* failure = std::get_if<ManifestFailure>(&answer);
    EXPECT_FALSE(failure) << (failure ? failure->reason.toStdString() : std::string());
    const auto* received = std::get_if<QByteArray>(&answer);
    ASSERT_TRUE(received);
    EXPECT_EQ(*received, body);
}

void expectFailure(const ManifestAnswer& answer, const QString& reason)
{
    const auto* failure = std::get_if<ManifestFailure>(&answer);
    ASSERT_TRUE(failure);
    EXPECT_TRUE(failure->reason.startsWith(reason)) << failure->reason.toStdString();
}

void expectRefusal(const HttpServer& server, const QString& reason)
{
    RealUpdateService service(optionsFor(server.address()));
    ASSERT_TRUE(runCheck(service, /*manual=*/false));
    EXPECT_TRUE(service.statusMessage().isNull());
    ASSERT_TRUE(runCheck(service, /*manual=*/true));
    EXPECT_TRUE(service.statusMessage().startsWith(u"Lỗi khi kiểm tra: "_s + reason))
        << service.statusMessage().toStdString();
    EXPECT_FALSE(service.isUpdateAvailable());
    EXPECT_FALSE(service.lastCheckTime().isValid());
}

TEST_F(SecureCheck, SucceedsWithATrustedCertificate)
{
    const QSslConfiguration identity = makeServerIdentity(u"IP:127.0.0.1"_s);
    trust(identity);
    HttpServer server(newer(), identity);
    expectBody(answerFrom(server), manifest(u"1.0.8"_s));
    EXPECT_EQ(server.requests().size(), 1U);
}

TEST_F(SecureCheck, FailsWithACertificateThatNobodyVouchesFor)
{
    const HttpServer server(newer(), makeServerIdentity(u"IP:127.0.0.1"_s));
    expectRefusal(server, u"Không thể thiết lập kết nối an toàn ("_s);
    EXPECT_EQ(server.connectionCount(), 2);
    EXPECT_TRUE(server.requests().empty()) << "nothing was said to a stranger";
}

TEST_F(SecureCheck, FailsWithTheCertificateOfAnotherHost)
{
    const QSslConfiguration identity = makeServerIdentity(u"DNS:updates.example.org"_s);
    trust(identity);
    const HttpServer server(newer(), identity);
    expectFailure(answerFrom(server), u"Không thể thiết lập kết nối an toàn ("_s);
    EXPECT_EQ(server.connectionCount(), 1);
    EXPECT_TRUE(server.requests().empty());
}

TEST_F(SecureCheck, FailsWhenRedirectedToPlainHttp)
{
    const HttpServer plain(newer());
    const QSslConfiguration identity = makeServerIdentity(u"IP:127.0.0.1"_s);
    trust(identity);
    const HttpServer server(
        answering("302 Found", "", "Location: " + plain.address().toEncoded() + "\r\n"), identity);
    expectFailure(answerFrom(server), u"Máy chủ chuyển hướng sang một địa chỉ không an toàn."_s);
    EXPECT_EQ(server.requests().size(), 1U);
    EXPECT_EQ(plain.connectionCount(), 0);
}

TEST_F(SecureCheck, FollowsARedirectToHttps)
{
    const QSslConfiguration identity = makeServerIdentity(u"IP:127.0.0.1"_s);
    trust(identity);
    const HttpServer secure(newer(), identity);
    const HttpServer server(answering("302 Found", "", "Location: " + secure.address().toEncoded() + "\r\n"));
    expectBody(answerFrom(server), manifest(u"1.0.8"_s));
    EXPECT_EQ(secure.requests().size(), 1U);
}

TEST_F(SecureCheck, FailsWhenTheHandshakeStalls)
{
    // Without TLS of its own the server only sees bytes that make no request.
    const HttpServer server({});
    UpdateServiceOptions options = optionsFor(server.address());
    options.checkURL.setScheme(u"https"_s);
    EXPECT_TRUE(withEnoughTime([&](std::chrono::milliseconds limit) {
        options.timeout = limit;
        RealUpdateService service(options);
        EXPECT_TRUE(runCheck(service, /*manual=*/true));
        EXPECT_EQ(service.statusMessage(), u"Lỗi khi kiểm tra: Hết thời gian chờ máy chủ trả lời."_s);
        return server.connectionCount() > 0;
    }));
    EXPECT_TRUE(waitFor([&] { return server.openConnectionCount() == 0; }));
}

} // namespace
} // namespace Tavrin
