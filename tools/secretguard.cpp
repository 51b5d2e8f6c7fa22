// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/secretguard.h"

#include "tools/typedtexts.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QQmlEngine>
#include <QSignalBlocker>
#include <QTimer>
#include <QVariant>

#include <utility>

namespace Trivex {

namespace {

constexpr int Room = 64; ///< changes that a field has room for from the start
constexpr int CollectionDelay = 1000; ///< ms: a dialog that closes is gone by then

} // namespace

SecretGuard::SecretGuard(QObject *parent)
    : QObject(parent)
{
}

SecretGuard::~SecretGuard()
{
    TypedTexts::instance().drop(std::move(m_text));
}

QObject *SecretGuard::field() const
{
    return m_field;
}

void SecretGuard::setField(QObject *field)
{
    if (m_field || !field)
        return;
    m_field = field;
    m_text = field->property("text").toString();
    // Room that is there need not be found while one types, which would leave copies behind.
    m_changes = Room;
    if (m_text.isEmpty())
        forgetHistory();
    const QMetaObject *type = field->metaObject();
    connect(field, type->property(type->indexOfProperty("text")).notifySignal(), this,
            staticMetaObject.method(staticMetaObject.indexOfSlot("look()")));
    Q_EMIT fieldChanged();
}

void SecretGuard::look()
{
    if (m_busy || !m_field)
        return;
    QString text = m_field->property("text").toString();
    m_changes += 2 + qAbs(text.size() - m_text.size());
    std::swap(m_text, text);
    TypedTexts::instance().drop(std::move(text));
    if (!m_text.isEmpty())
        return;
    forgetHistory();
    QTimer::singleShot(CollectionDelay, this, &SecretGuard::collect);
}

// Undo would bring back what was typed, and the records of it have a letter each. Setting the text
// empties the history but keeps its memory, which the filler is then written over.
void SecretGuard::forgetHistory()
{
    if (m_changes == 0)
        return;
    m_busy = true;
    {
        // Nobody is to see the filler.
        const QSignalBlocker silence(m_field.data());
        // The field takes no text that it has already.
        for (const int size : {1, m_changes}) {
            QMetaObject::invokeMethod(m_field, "insert", Q_ARG(int, 0),
                                      Q_ARG(QString, QString(size, QLatin1Char('*'))));
            m_field->setProperty("text", QString());
        }
    }
    m_busy = false;
    m_changes = 0;
}

void SecretGuard::collect()
{
    TypedTexts &texts = TypedTexts::instance();
    texts.wipe();
    QQmlEngine *engine = m_field ? qmlEngine(m_field) : nullptr;
    if (texts.isEmpty() || !engine)
        return;
    engine->collectGarbage();
    texts.wipe();
}

} // namespace Trivex
