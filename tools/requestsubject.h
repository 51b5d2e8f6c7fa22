// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace Trivex {

/// The subject of a request, value by value, and its usages. The request's own setters add values
/// and never take one away; this replaces. A singleton in QML. `request` is a `CertificateRequest`;
/// null and any other object have no values and take none.
class RequestSubject : public QObject {
    Q_OBJECT
public:
    explicit RequestSubject(QObject *parent = nullptr);

    /// The value of attribute `type` that is shown where there are several; empty without one.
    Q_INVOKABLE QString value(QObject *request, int type) const;
    /// `text` takes the place of the shown value of attribute `type` (a
    /// `Certificate.CertificateInfoTypeKnown`) at the next save; an empty one takes that value
    /// away. Further values stay. False for what is no request.
    Q_INVOKABLE bool replace(QObject *request, int type, const QString &text) const;
    /// What the certificate is to be used for: names of RFC 5280, 4.2.1.3 ("digitalSignature").
    Q_INVOKABLE QStringList keyUsages(QObject *request) const;
    /// The same for its purposes: names of RFC 5280, 4.2.1.12 ("serverAuth"), or dotted OIDs.
    Q_INVOKABLE QStringList purposes(QObject *request) const;
    /// Replaces both at the next save; names that nobody knows are left out. False for what is no
    /// request.
    Q_INVOKABLE bool setUsages(QObject *request, const QStringList &keyUsages,
                               const QStringList &purposes) const;
    /// Takes back what was replaced since the request was made or loaded.
    Q_INVOKABLE void restore(QObject *request) const;
    /// Why what was replaced can't be saved and what to do instead, in words; empty where it can.
    Q_INVOKABLE QString refusal(QObject *request) const;
    /// True when the request's key is there to sign it anew. May ask tokens.
    Q_INVOKABLE bool hasKey(QObject *request) const;
    /// The path of its file; empty for a request that was not saved yet.
    Q_INVOKABLE QString file(QObject *request) const;
    /// Every value that the subject holds beside the shown one of each of `types`: attributes of
    /// other types, and further values of these.
    Q_INVOKABLE QStringList others(QObject *request, const QList<int> &types) const;
};

} // namespace Trivex
