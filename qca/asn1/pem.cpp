// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/asn1/pem.h"

#include "qca/base/bounds.h"

#include <algorithm>

namespace Trivex {

namespace {

constexpr int LineLength = 64;
constexpr char Begin[] = "-----BEGIN ";
constexpr int BeginSize = int(sizeof Begin) - 1;
constexpr char End[] = "-----END ";
constexpr char Dashes[] = "-----";

// The lines before the first empty one, when they are header lines.
QByteArray cutHeader(QByteArray *body)
{
    if (!body->contains(':'))
        return {};
    int end = body->indexOf("\n\n");
    int gap = 2;
    if (end < 0) {
        end = body->indexOf("\r\n\r\n");
        gap = 4;
    }
    if (end < 0)
        return {};
    const QByteArray header = body->left(end).trimmed();
    *body = body->mid(end + gap);
    return header;
}

QByteArray withoutSpace(const QByteArray &body)
{
    QByteArray result(body.size(), Qt::Uninitialized);
    char *end = result.data();
    // Adding to a byte array looks each time whether it has room, and whether it is shared.
    for (const char c : body) {
        if (c != '\n' && c != '\r' && c != ' ' && c != '\t')
            *end++ = c;
    }
    result.truncate(int(end - result.constData()));
    return result;
}

// The position behind the next line break.
int lineEnd(const QByteArray &text, int position)
{
    while (position < text.size() && text.at(position) == '\r')
        ++position;
    return position < text.size() && text.at(position) == '\n' ? position + 1 : position;
}

bool readBody(QByteArray body, PemBlock *block)
{
    block->header = cutHeader(&body);
    const auto decoded = QByteArray::fromBase64Encoding(
        withoutSpace(body), QByteArray::Base64Encoding | QByteArray::AbortOnBase64DecodingErrors);
    block->data = decoded.decoded;
    block->data.squeeze(); // decoded where the text had stood
    return decoded && !block->data.isEmpty();
}

// The block at the beginning of `text`. Its end is where the text of its last line ends.
bool readBlock(const QByteArray &text, PemBlock *block)
{
    const int labelEnd = text.indexOf(Dashes, BeginSize);
    if (labelEnd < 0)
        return false;
    block->label = text.mid(BeginSize, labelEnd - BeginSize);
    if (block->label.contains('\n'))
        return false;
    const QByteArray endMark = End + block->label + Dashes;
    const int body = labelEnd + int(sizeof Dashes) - 1;
    const int end = text.indexOf(endMark, body);
    block->end = end + endMark.size();
    return end >= 0 && readBody(text.mid(body, end - body), block);
}

} // namespace

QList<PemBlock> readPem(const QByteArray &text, int *broken)
{
    QList<PemBlock> blocks;
    int position = text.indexOf(Begin);
    while (position >= 0) {
        const int next = text.indexOf(Begin, position + BeginSize);
        const int limit = next < 0 ? text.size() : next;
        PemBlock block;
        // A block ends before the next one begins, so the search stops there: each octet is read
        // only a few times, however many blocks begin.
        if (readBlock(QByteArray::fromRawData(text.constData() + position, limit - position),
                      &block)) {
            block.begin = position;
            block.end = lineEnd(text, position + block.end);
            blocks += block;
        } else if (broken) {
            ++*broken;
        }
        position = next;
    }
    return blocks;
}

QByteArray readPem(const QString &text, const QList<QByteArray> &labels)
{
    if (text.size() > MaxFileBytes)
        return {};
    const QList<PemBlock> blocks = readPem(text.toLatin1());
    for (const PemBlock &block : blocks) {
        if (labels.contains(block.label) && block.header.isEmpty())
            return block.data;
    }
    return {};
}

QByteArray writePem(const QByteArray &label, const QByteArray &data)
{
    const QByteArray encoded = data.toBase64();
    QByteArray text = Begin + label + Dashes + '\n';
    // What is added as a sum of strings has the text allocated anew, to its exact size, each time.
    for (int i = 0; i < encoded.size(); i += LineLength) {
        text.append(encoded.constData() + i, std::min(LineLength, encoded.size() - i));
        text.append('\n');
    }
    return text + End + label + Dashes + '\n';
}

} // namespace Trivex
