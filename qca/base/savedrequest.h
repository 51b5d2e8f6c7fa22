// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QtCrypto>

namespace Trivex {

/// The C++ interface of a request object, found by `qobject_cast`. It adds what QML's interface
/// lacks: the setters there only add values, and there is no property for the file. GUI thread.
class SavedRequest {
public:
    /// The whole path of the file last written or loaded; empty before.
    virtual QString requestFile() const = 0;
    /// The subject that the next save writes.
    virtual QCA::CertificateInfo requestInfo() const = 0;
    /// Replaces that subject by `info`.
    virtual void setRequestInfo(const QCA::CertificateInfo &info) = 0;
    /// Goes back to the subject of the request as it was last made or loaded.
    virtual void restoreRequestInfo() = 0;
    /// DER SubjectPublicKeyInfo of the key that the request is for; empty without a request.
    virtual QByteArray requestKeyInfo() const = 0;
    /// True when the key of the loaded request is available to sign it again. Asks the tokens; an
    /// event loop may run meanwhile.
    virtual bool hasRequestKey() const = 0;

protected:
    ~SavedRequest() = default;
};

} // namespace Trivex

Q_DECLARE_INTERFACE(Trivex::SavedRequest, "org.trivex.SavedRequest/1")
