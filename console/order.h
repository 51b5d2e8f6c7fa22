// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QCommandLineParser>

namespace Trivex {

/// What the command line asks for.
struct Order {
    enum Kind {
        Window = 0, ///< nothing else: the files are opened in it
        List = 1,
        Show = 2,
        Sign = 4,
        Verify = 8,
    };
    Kind kind = Window;
    QStringList files;
    QString passwordFile; ///< holds the password of a bundle in its first line; empty: it is asked
    QString pinFile; ///< the same for the PIN of a token
    QString key; ///< whose key signs
    QString output; ///< the file of the signature; empty: beside the document
    QString document; ///< what a signature belongs to; empty: it lies beside it, or in it
    bool isJson = false;
    bool isAttached = false;
    bool mayReplace = false;
    /// What is wrong with it, as a sentence; empty when it can be carried out.
    QString problem;
};

/// The path of a file that was named by it or by its URL. What lies there by just this name is
/// meant, though it looks like a URL.
QString pathOf(const QString &argument);

/// The options of the program, with their meaning.
void describe(QCommandLineParser *parser);

// These take the arguments without the program's name. What follows "--" is a file, whatever it is
// called.

/// The first option that asks about the program itself: its version, its options; else empty.
QByteArray questionIn(const QList<QByteArray> &arguments);

/// True when a program is to read the answer.
bool isForPrograms(const QList<QByteArray> &arguments);

/// True when these arguments ask for something that needs no display, or where there is none: Qt
/// would end the process by abort() there, a wrong option unsaid.
bool needsNoDisplay(const QList<QByteArray> &arguments);

/// What was parsed.
Order orderOf(const QCommandLineParser &parser);

} // namespace Trivex
