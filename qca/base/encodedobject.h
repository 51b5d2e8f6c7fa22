// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QObject>

namespace Trivex {

/// The C++ interface of every object of the QML types that stands for a certificate or a request,
/// found by `qobject_cast`: the bytes that its properties were read from. QML's interface has no
/// property for them. GUI thread.
class EncodedObject {
public:
    /// DER of the certificate, or of the request as it was last made or loaded; empty for an object
    /// without one.
    virtual QByteArray encoding() const = 0;

protected:
    ~EncodedObject() = default;
};

} // namespace Trivex

Q_DECLARE_INTERFACE(Trivex::EncodedObject, "org.trivex.EncodedObject/1")
