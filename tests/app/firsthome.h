// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "app/privatetokens.h"
#include "tests/app/harness.h"
#include "tests/support/needtokens.h"
#include "tests/support/testtoken.h"

#include <QFile>

namespace TrivexTest {

/// The home of somebody who starts the program for the first time, on a machine with SoftHSM.
struct FirstHome {
    explicit FirstHome(const WindowEnvironment &environment)
        : folder(QString::fromLocal8Bit(qgetenv("XDG_DATA_HOME"))
                 + QStringLiteral("/trivex/softhsm"))
    {
        Q_UNUSED(environment)
        qunsetenv("SOFTHSM2_CONF");
        // As everywhere with p11-kit: the trust module is there too, and is nobody's token.
        const QString trust = QStringLiteral(TRIVEX_P11_TRUST);
        QString modules = TestToken::softHsmLibrary();
        if (QFile::exists(trust))
            modules += QLatin1Char(';') + trust;
        qputenv("TRIVEX_PKCS11_MODULES", QFile::encodeName(modules));
        Trivex::usePrivateTokens({});
    }
    QString problem() const { return missingTokenTools(); }
    QString configuration() const { return folder + QStringLiteral("/softhsm2.conf"); }

    const QString folder;
};

} // namespace TrivexTest
