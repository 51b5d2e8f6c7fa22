// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/requestedfields.h"

#include <QObject>

namespace Trivex {

/// The C++ interface of a request object, found by `qobject_cast`. It adds what QML's interface
/// lacks: the setters there only add values, and there is no property for the file. GUI thread.
class SavedRequest {
public:
    /// The whole path of the file last written or loaded; empty before.
    virtual QString requestFile() const = 0;
    /// The subject and the usages that the next save writes.
    virtual RequestedFields requestedFields() const = 0;
    /// Replaces them by `fields`.
    virtual void setRequestedFields(const RequestedFields &fields) = 0;
    /// Goes back to those of the request as it was last made or loaded.
    virtual void restoreRequestedFields() = 0;
    /// Why the next save in edit mode can't write the fields into the loaded request. Asks no
    /// token.
    virtual EditLoss editLoss() const = 0;
    /// DER SubjectPublicKeyInfo of the key that the request is for; empty without a request.
    virtual QByteArray requestKeyInfo() const = 0;
    /// True when the key of the loaded request is available to sign it again. Asks the tokens; an
    /// event loop may run meanwhile.
    virtual bool hasRequestKey() const = 0;

    QCA::CertificateInfo requestInfo() const { return requestedFields().info; }
    void setRequestInfo(const QCA::CertificateInfo &info)
    {
        setRequestedFields({info, requestedFields().usages});
    }

protected:
    ~SavedRequest() = default;
};

} // namespace Trivex

Q_DECLARE_INTERFACE(Trivex::SavedRequest, "org.trivex.SavedRequest/1")
