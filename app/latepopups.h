// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace Trivex {

/// Takes the list of completions of a file dialog away with the dialog. Qt fills that list when it
/// has read the folder, and shows it though the dialog may have been answered meanwhile: it would
/// stay on top of the window and take its keys. A filter of the application's events.
class LatePopups : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace Trivex
