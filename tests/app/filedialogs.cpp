// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/filedialogs.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

namespace TrivexTest {

QFileDialog *fileDialog()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        auto *dialog = qobject_cast<QFileDialog *>(widget);
        if (dialog && dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

bool answerFileDialog(WindowDriver &driver, const QString &path, bool accept)
{
    if (!driver.waitFor([] { return fileDialog() != nullptr; }))
        return false;
    QFileDialog *dialog = fileDialog();
    if (!QTest::qWaitForWindowExposed(dialog))
        return false;
    auto *name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    if (!name)
        return false;
    if (dialog->fileMode() == QFileDialog::Directory)
        dialog->setDirectory(path);
    else if (!path.isEmpty())
        name->setText(path);
    auto *box = dialog->findChild<QDialogButtonBox *>();
    const QList<QAbstractButton *> buttons = box ? box->buttons() : QList<QAbstractButton *>();
    for (QAbstractButton *button : buttons) {
        if ((box->buttonRole(button) == QDialogButtonBox::AcceptRole) == accept) {
            QTest::mouseClick(button, Qt::LeftButton);
            return driver.waitFor(
                [&] { return !fileDialog() && QGuiApplication::focusWindow() == driver.window(); });
        }
    }
    return false;
}

} // namespace TrivexTest
