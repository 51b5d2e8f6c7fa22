// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QtCrypto>

/// The files that tests/corpus/make-corpus has made, and the openssl command to compare with.
namespace Corpus {

struct Certificate {
    QString file;
    QString signer; ///< "self", "other", or "engine": self where the GOST engine is there
    int keyType = -1; ///< `Trivex::KeyType`
};

/// Points HOME and the XDG directories below a new temporary directory, for the life of the
/// program, and QCA to the plugins of this build. Before the application object.
void prepareEnvironment();

QString path(const QString &file);
QByteArray read(const QString &file);
QList<Certificate> certificates();
/// Whether there are files with GOST keys, which are made where the openssl engine gost is
/// installed; says SKIP where there are none.
bool hasGost();
/// Every file, those below "crashers" included.
QStringList files();

/// What the openssl command prints; empty when it fails.
QByteArray openssl(const QStringList &arguments, const QByteArray &input = {});

QCA::Certificate certificate(const QString &file);

} // namespace Corpus
