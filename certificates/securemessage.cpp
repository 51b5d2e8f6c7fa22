// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/securemessage.h"

SecureMessage::SecureMessage(QObject *parent)
    : QObject(parent)
{
}
