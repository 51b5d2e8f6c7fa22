// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/app/handsfixture.h"

#include "tests/app/filedialogs.h"
#include "tests/support/userfiles.h"

#include <QFileDialog>
#include <QtTest>

namespace TrivexTest {

QString HandsFixture::userFile(const QString &name)
{
    return TrivexTest::userFile(name + QStringLiteral(".pem"));
}

bool HandsFixture::addUser(const Person &person) const
{
    const QString name = QLatin1String(person.name);
    const QString issuer = m_authority.file(QLatin1String(person.issuer));
    if (!QFile::exists(issuer + QStringLiteral(".pem"))) {
        m_authority.openssl({QStringLiteral("req"), QStringLiteral("-x509"),
                             QStringLiteral("-newkey"), QStringLiteral("ed25519"),
                             QStringLiteral("-nodes"), QStringLiteral("-keyout"),
                             issuer + QStringLiteral(".key"), QStringLiteral("-out"),
                             issuer + QStringLiteral(".pem"), QStringLiteral("-subj"),
                             QStringLiteral("/CN=") + QLatin1String(person.issuer)});
    }
    const QByteArray certificate = m_authority.openssl(
        {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
         QStringLiteral("ed25519"), QStringLiteral("-nodes"), QStringLiteral("-keyout"),
         QStringLiteral("/dev/null"), QStringLiteral("-CA"), issuer + QStringLiteral(".pem"),
         QStringLiteral("-CAkey"), issuer + QStringLiteral(".key"), QStringLiteral("-days"),
         QString::number(person.days), QStringLiteral("-subj"), QStringLiteral("/CN=") + name});
    return !certificate.isEmpty() && !writeTestFile(userFile(name), certificate).isEmpty();
}

void HandsFixture::showPersons()
{
    for (const Person &person : Persons) {
        if (!QFile::exists(userFile(QLatin1String(person.name))))
            QVERIFY(addUser(person));
    }
    QVERIFY(m_steps->show("requests"));
    QVERIFY(m_steps->show("users"));
    QTRY_COMPARE(m_window->rowCount(), int(Persons.size()));
    m_window->takeWarnings();
}

void HandsFixture::restore()
{
    if (QFileDialog *dialog = fileDialog())
        dialog->reject();
    m_window->window()->requestActivate();
    m_steps->escape();
    m_window->window()->resize(1180, 760);
    QVERIFY(m_window->waitForItem(QStringLiteral("sidebar")));
}

QQuickItem *HandsFixture::rowItem(const char *name) const
{
    QQuickItem *row = nullptr;
    QMetaObject::invokeMethod(list(), "itemAtIndex", Q_RETURN_ARG(QQuickItem *, row),
                              Q_ARG(int, m_window->rowNamed(QLatin1String(name))));
    return row;
}

QPoint HandsFixture::middleOf(const char *name) const
{
    const QQuickItem *row = rowItem(name);
    return row ? row->mapToScene({row->width() / 2, row->height() / 2}).toPoint() : QPoint();
}

void HandsFixture::clickRow(const char *name, Qt::MouseButton button,
                            Qt::KeyboardModifiers modifiers)
{
    QTest::mouseClick(m_window->window(), button, modifiers, middleOf(name));
}

QString HandsFixture::names() const
{
    const auto *model = list()->property("model").value<QAbstractItemModel *>();
    QStringList names;
    for (int row = 0; model && row < model->rowCount(); ++row)
        names += valueOf(*model, row, "name").toString();
    return names.join(QLatin1Char(' '));
}

QString HandsFixture::chosen() const
{
    QStringList names;
    for (int row = 0; row < m_window->rowCount(); ++row) {
        QQuickItem *item = nullptr;
        QMetaObject::invokeMethod(list(), "itemAtIndex", Q_RETURN_ARG(QQuickItem *, item),
                                  Q_ARG(int, row));
        if (item && item->property("highlighted").toBool())
            names += item->property("name").toString();
    }
    return names.join(QLatin1Char(' '));
}

} // namespace TrivexTest
