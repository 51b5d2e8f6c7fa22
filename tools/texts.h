// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace Trivex {

/// Values as people read them. A singleton in QML.
class Texts : public QObject {
    Q_OBJECT
public:
    explicit Texts(QObject *parent = nullptr);

    /// Bytes as a person reads them, in the user's locale.
    Q_INVOKABLE QString size(qint64 bytes) const;

    /// Bytes as two hexadecimal digits each. The module writes those above 7F as negative numbers
    /// ("-3D" for C3), which no other program does; this undoes it. Other text comes back as it is.
    Q_INVOKABLE static QString plainHex(const QString &text);

    /// `text`, which a stranger has chosen, as one line without marks that hide or turn parts of
    /// it.
    Q_INVOKABLE QString plain(const QString &text) const;

    /// `message` with `values` in its places %1 to %9, each as it is. Between quotation marks of
    /// the message the marks of a value become inner ones: «АО „Пример“», “the ‘Example’ company”.
    Q_INVOKABLE static QString put(const QString &message, const QStringList &values);

    /// `text` with every place that contains `pattern` marked, as styled text; the rest escaped.
    Q_INVOKABLE QString marked(const QString &text, const QString &pattern,
                               const QString &color) const;
};

} // namespace Trivex
