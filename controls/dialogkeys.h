// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>

class QWindow;

namespace Trivex {

/// Gives the keys to a dialog of the platform that opens over a Qt Quick window, and back to that
/// window when the dialog has gone.
///
/// Two things are in the way. Where there is no window manager, as in a kiosk, the display gives
/// the keys of a window that has gone to nobody. And where a list of the dialog was open, as a
/// field's completions are, Qt tells the window that the keys come back from a popup; Qt Quick
/// leaves that to the item that had them before, and there is none since the dialog opened. After
/// either, the program could be used by mouse only.
///
/// Keys that another program has stay there. In the GUI thread; sees all events of the application
/// while it lives.
class DialogKeys : public QObject {
    Q_OBJECT
public:
    explicit DialogKeys(QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void dialogShown(QWindow *dialog);
    void dialogHidden(const QWindow *dialog);
    void giveBack();

    QPointer<QWindow> m_window; ///< the one that waits for its keys
};

} // namespace Trivex
