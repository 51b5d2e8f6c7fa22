// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/keybundlefile.h"

#include "qca/adapter/regularfile.h"

namespace Trivex {

namespace {

/// The decoder of one provider. The stock class would ask by itself.
class BundleDecoder : public QCA::Algorithm {
public:
    explicit BundleDecoder(const QString &provider)
        : QCA::Algorithm(QStringLiteral("pkcs12"), provider)
    {
    }

    QCA::ConvertResult decode(const QByteArray &content, const QCA::SecureArray &password,
                              QCA::KeyBundle *bundle) const
    {
        const auto *decoder = dynamic_cast<const QCA::PKCS12Context *>(context());
        if (!decoder)
            return QCA::ErrorDecode;
        QString name;
        QList<QCA::CertContext *> certificates;
        QCA::PKeyContext *key = nullptr;
        const QCA::ConvertResult result =
            decoder->fromPKCS12(content, password, &name, &certificates, &key);
        if (result != QCA::ConvertGood)
            return result;
        if (certificates.isEmpty() || !key) {
            delete key;
            qDeleteAll(certificates);
            return QCA::ErrorDecode;
        }
        *bundle = made(name, certificates, key);
        return result;
    }

private:
    /// Owns what it is given.
    static QCA::KeyBundle made(const QString &name, const QList<QCA::CertContext *> &certificates,
                               QCA::PKeyContext *key)
    {
        QCA::CertificateChain chain;
        for (QCA::CertContext *context : certificates) {
            QCA::Certificate certificate;
            certificate.change(context);
            chain.append(certificate);
        }
        QCA::PrivateKey privateKey;
        privateKey.change(key);
        QCA::KeyBundle bundle;
        bundle.setName(name);
        bundle.setCertificateChainAndKey(chain, privateKey);
        return bundle;
    }
};

} // namespace

QCA::KeyBundle readKeyBundle(const QString &path, const QCA::SecureArray &password,
                             QCA::ConvertResult *result, const QString &provider)
{
    FileProblem problem = FileProblem::None;
    const auto contents = readRegularFile(path, &problem);
    QCA::KeyBundle bundle;
    // What is too large is no bundle.
    *result = problem == FileProblem::Unreadable ? QCA::ErrorFile : QCA::ErrorDecode;
    if (contents && QCA::isSupported("pkcs12", provider))
        *result = BundleDecoder(provider).decode(*contents, password, &bundle);
    return bundle;
}

} // namespace Trivex
