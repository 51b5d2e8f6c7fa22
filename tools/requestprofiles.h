// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/requestcontents.h"

#include <QObject>

#include <optional>

namespace Trivex {

/// Kinds of requests that a person makes again and again: which names are asked for, with or
/// without a value, and which usages. Four come with the program; others are files of JSON below
/// the user's configuration, one a profile, which may be copied to another machine. A singleton in
/// QML.
class RequestProfiles : public QObject {
    Q_OBJECT
    /// The names of all profiles: those of the program, then the user's in alphabetical order.
    Q_PROPERTY(QStringList names READ names NOTIFY namesChanged)
public:
    explicit RequestProfiles(QObject *parent = nullptr);

    QStringList names() const;
    /// What people call a profile: its own name, translated for those of the program.
    Q_INVOKABLE QString title(const QString &name) const;
    /// True for a profile of the program, which can't be removed or replaced.
    Q_INVOKABLE bool isBuiltIn(const QString &name) const;
    /// Removes the user's profile `name`; false where there is none.
    Q_INVOKABLE bool remove(const QString &name);

    /// Nothing for a profile that is not there or can't be read.
    std::optional<RequestContents> load(const QString &name) const;
    /// The name under which a profile called `name` is listed: that of its file, in which some
    /// characters can't stand. Two names that come to the same are one profile.
    Q_INVOKABLE static QString listedName(const QString &name);
    /// Whether the user has a profile of that `listedName`.
    Q_INVOKABLE bool exists(const QString &name) const;

    enum SaveResult {
        Saved,
        Exists, ///< there is one of that `listedName`, and it was not to be replaced
        NotSaved, ///< an empty name, a name of the program's own, or the file can't be written
        TooLarge, ///< it would be more than `MostBytes`, which nothing reads again
    };
    Q_ENUM(SaveResult)
    /// Saves `contents` as the user's profile `name`.
    SaveResult save(const QString &name, const RequestContents &contents, bool mayReplace);

    /// Of a profile's file, and of what a page can show as fields; a larger one is not loaded.
    static constexpr int MostBytes = 256 * 1024;
    static constexpr int MostValues = 200;

    /// The directory of the user's profiles, with the separator at its end.
    static QString directory();

Q_SIGNALS:
    void namesChanged();
};

} // namespace Trivex
