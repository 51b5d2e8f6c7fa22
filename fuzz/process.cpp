// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "fuzz/process.h"

#include "fuzz/target.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QtCrypto>

#include <cstdio>
#include <cstdlib>

namespace TrivexFuzz {

void prepareProcess()
{
    static const QTemporaryDir home;
    for (const char *name : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
        qputenv(name, QFile::encodeName(home.path()));
    qputenv("QCA_PLUGIN_PATH", TRIVEX_FUZZ_PLUGINS);
    // Damage is what the code is here for: its warnings would be all that one sees.
    qputenv("QT_LOGGING_RULES", "*.warning=false;*.debug=false");
    static int argc = 1;
    static char name[] = "fuzz";
    static char *argv[] = {name, nullptr};
    static const QCoreApplication application(argc, argv);
    static const QCA::Initializer initializer;
    QCA::scanForPlugins();
}

void check(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "NOT SO: %s\n", what);
    std::abort();
}

} // namespace TrivexFuzz
