// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/tokens/tokensteps.h"

#include <QCoreApplication>

/// trivex-token-steps [<step>=<why the token can't>...]
///
/// The token comes from the environment: TRIVEX_PKCS11_MODULES (or p11-kit's configuration) names
/// its module, TRIVEX_TOKEN_NAME its store, TRIVEX_TOKEN_PIN its PIN, empty for one that wants
/// none.
int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    TrivexTest::TokenFacts facts;
    facts.name = qEnvironmentVariable("TRIVEX_TOKEN_NAME");
    facts.pin = qgetenv("TRIVEX_TOKEN_PIN");
    const QStringList limits = QCoreApplication::arguments().mid(1);
    for (const QString &limit : limits)
        facts.cannot.insert(limit.section(QLatin1Char('='), 0, 0),
                            limit.section(QLatin1Char('='), 1));
    return TrivexTest::TokenSteps(facts).run() ? 0 : 1;
}
