// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QtCrypto>

namespace TrivexTest {

/// What openssl makes a request with: one with all that a request may have, and one with a name.
extern const char Configuration[];
extern const char Plain[];

QCA::PrivateKey key(const QString &file);
/// A request that openssl has made.
QCA::CertificateRequest made(const QString &keyFile, const char *configuration = Configuration);

/// The elements in the content of `der`.
QList<QByteArray> partsOf(const QByteArray &der);
/// What is signed: version, name, key, attributes.
QList<QByteArray> bodyOf(const QCA::CertificateRequest &request);
QList<QByteArray> namesOf(const QCA::CertificateRequest &request);
QList<QByteArray> attributesOf(const QCA::CertificateRequest &request);
QList<QByteArray> extensionsOf(const QCA::CertificateRequest &request);
QByteArray alternativeNames(const QCA::CertificateRequest &request);
/// The places at which two lists differ; -1 for lists of different lengths.
QList<int> differences(const QList<QByteArray> &a, const QList<QByteArray> &b);

/// `after` may be null.
void replace(QCA::CertificateInfo *info, int type, const char *before, const char *after);
bool isVerified(const QCA::CertificateRequest &request);

/// A test of a request that another program made and that is edited.
class EditedRequestTest : public QObject {
private:
    QCA::Initializer m_initializer; // before what QCA has to outlive

protected:
    void makeOriginal();

    QCA::CertificateRequest m_original;
    QCA::CertificateInfo m_info;
};

} // namespace TrivexTest
