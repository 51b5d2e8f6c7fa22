// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace Trivex {

/// Where this program finds its QML modules: beside it in a build or a relocated installation, or
/// where it was configured to be installed.
QString moduleDirectory();

/// Takes out of the environment what names no place: a home folder that is none, and relative
/// folders of XDG_DATA_HOME and its like, which their specification wants ignored. Everything below
/// would otherwise keep certificates, requests and keys wherever the program was started. Without a
/// home folder there, that of the system's list of users is set. Before anything asks for a folder.
void mendEnvironment();

/// Lets QCA find the providers that lie beside this program. Before QCA is loaded.
void preparePluginPaths();

/// Loads Qt's own texts for the user's language, for file dialogs and their like.
void installQtTranslations();

/// Chooses the project's style, with Fusion for what it lacks. Before any QML is loaded.
void chooseStyle();

} // namespace Trivex
