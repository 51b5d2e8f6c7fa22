// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/encodedobject.h"
#include "qca/base/savedrequest.h"

#include <QFile>
#include <QObject>

namespace TrivexTest {

/// A saved request whose file is where the test says; the one kind of row that needs no store.
class FiledRequest : public QObject, public Trivex::SavedRequest, public Trivex::EncodedObject {
    Q_OBJECT
    Q_INTERFACES(Trivex::SavedRequest Trivex::EncodedObject)
public:
    QString requestFile() const override { return path; }
    Trivex::RequestedFields requestedFields() const override { return {}; }
    void setRequestedFields(const Trivex::RequestedFields &) override { }
    void restoreRequestedFields() override { }
    Trivex::EditLoss editLoss() const override { return Trivex::EditLoss::None; }
    bool hasRequestKey() const override { return false; }
    QByteArray requestKeyInfo() const override { return {}; }
    /// What the file holds.
    QByteArray encoding() const override
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QString path;
};

} // namespace TrivexTest
