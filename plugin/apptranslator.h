// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QTranslator>

class QQmlEngine;

/// A catalogue of the plugin; a class of its own so that it can be told from those of the host.
class AppTranslator : public QTranslator {
    Q_OBJECT
public:
    explicit AppTranslator(QObject *parent = nullptr);
};

/// Installs the English catalogue and before it that of the default locale, for as long as
/// `engine` lives. A missing catalogue is no error: its identifiers fall through.
void installTranslators(QQmlEngine *engine);
