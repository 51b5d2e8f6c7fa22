// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

namespace Trivex {

/// Wipes what was typed into a text field for secrets: each text that the field had, as soon as
/// nobody else holds it, and the field's history of changes when it is emptied.
///
/// A script that has read the text keeps it, whole, until it lets it go and the engine collects
/// what is left; the guard asks for that collection after the field was emptied.
///
/// The field has a property `text` and an invokable `insert(int, QString)`, as TextInput has.
class SecretGuard : public QObject {
    Q_OBJECT
    /// The field that is looked after; set once.
    Q_PROPERTY(QObject *field READ field WRITE setField NOTIFY fieldChanged)
public:
    explicit SecretGuard(QObject *parent = nullptr);
    ~SecretGuard() override;

    QObject *field() const;
    void setField(QObject *field);

Q_SIGNALS:
    void fieldChanged();

private Q_SLOTS:
    void look();

private:
    void forgetHistory();
    void collect();

    QPointer<QObject> m_field;
    /// The field's text, shared: the field copies it to change it, and the old one stays here.
    QString m_text;
    int m_changes = 0; ///< since the history was empty
    bool m_busy = false;
};

} // namespace Trivex
