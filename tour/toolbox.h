// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractItemModel>
#include <QStringList>
#include <QVariantMap>

namespace Trivex {

/*! What the tour's QML needs beyond the module itself: the files made for it, independent programs
 * to check results with, and a place to say what was seen.
 */
class Toolbox : public QObject {
    Q_OBJECT
    //! The tour's own directory, made by the script that starts it.
    Q_PROPERTY(QString directory READ directory CONSTANT)
    //! PIN of the tour's token.
    Q_PROPERTY(QString pin READ pin CONSTANT)
    //! Label of the tour's token.
    Q_PROPERTY(QString token READ token CONSTANT)

public:
    explicit Toolbox(const QString &directory, QObject *parent = nullptr);

    QString directory() const { return m_directory; }
    QString pin() const;
    QString token() const;
    int failures() const { return m_failures; }

    //! One line for a step, and its part in the exit code.
    Q_INVOKABLE void step(bool ok, const QString &name, const QString &saw);
    Q_INVOKABLE void heading(const QString &text);
    //! Runs a program to its end (at most 60 s): {code, output, error}.
    Q_INVOKABLE QVariantMap run(const QString &program, const QStringList &arguments) const;
    //! What the row of `model` holds in the role of that name.
    Q_INVOKABLE QVariant value(QAbstractItemModel *model, int row, const QString &role) const;
    //! pkcs11-tool on the tour's token, logged in.
    Q_INVOKABLE QVariantMap pkcs11(const QStringList &arguments) const;

    Q_INVOKABLE QString path(const QString &name) const { return m_directory + u'/' + name; }
    Q_INVOKABLE bool exists(const QString &file) const;
    Q_INVOKABLE qint64 size(const QString &file) const;
    Q_INVOKABLE QStringList files(const QString &directory, const QString &filter) const;
    Q_INVOKABLE bool writeText(const QString &file, const QString &text) const;
    //! Turns one bit over in the middle of a file.
    Q_INVOKABLE bool flipBit(const QString &file) const;
    //! Takes the token's module file away, and brings it back.
    Q_INVOKABLE bool removeModule() const;
    Q_INVOKABLE bool restoreModule() const;

private:
    QString m_directory;
    int m_steps = 0;
    int m_failures = 0;
};

} // namespace Trivex
