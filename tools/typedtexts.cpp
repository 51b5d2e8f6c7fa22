// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/typedtexts.h"

#include <algorithm>
#include <utility>

namespace Trivex {

namespace {

/// True when nothing of the text is left to wipe. Others that hold it must find what they know.
bool isWiped(QString &text)
{
    if (text.isEmpty())
        return true;
    if (!text.isDetached())
        return false;
    // All that the block has room for: a text that became shorter in its place left its end there.
    std::fill_n(text.data(), text.capacity(), QChar());
    return true;
}

} // namespace

TypedTexts &TypedTexts::instance()
{
    static TypedTexts texts;
    return texts;
}

void TypedTexts::drop(QString &&text)
{
    wipe();
    QString taken(std::move(text));
    if (!isWiped(taken))
        m_texts.push_back(std::move(taken));
}

void TypedTexts::wipe()
{
    m_texts.erase(std::remove_if(m_texts.begin(), m_texts.end(), isWiped), m_texts.end());
}

TypedTexts::~TypedTexts()
{
    wipe();
}

} // namespace Trivex
