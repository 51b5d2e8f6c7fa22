// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/engine/x509/pem.h"

namespace Trivex {

namespace {

constexpr int LineLength = 64;
constexpr char Begin[] = "-----BEGIN ";
constexpr char End[] = "-----END ";
constexpr char Dashes[] = "-----";

// The lines before the first empty one, when they are header lines.
QByteArray takeHeader(QByteArray *body)
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
    QByteArray result;
    result.reserve(body.size());
    for (const char c : body) {
        if (c != '\n' && c != '\r' && c != ' ' && c != '\t')
            result += c;
    }
    return result;
}

// Behind the line break that follows `position`.
int lineEnd(const QByteArray &text, int position)
{
    while (position < text.size() && text.at(position) == '\r')
        ++position;
    return position < text.size() && text.at(position) == '\n' ? position + 1 : position;
}

bool readBody(QByteArray body, PemBlock *block)
{
    block->header = takeHeader(&body);
    const auto decoded = QByteArray::fromBase64Encoding(
        withoutSpace(body), QByteArray::Base64Encoding | QByteArray::AbortOnBase64DecodingErrors);
    block->data = decoded.decoded;
    return decoded && !block->data.isEmpty();
}

} // namespace

QList<PemBlock> readPem(const QByteArray &text, int *broken)
{
    QList<PemBlock> blocks;
    int position = text.indexOf(Begin);
    while (position >= 0) {
        const int label = position + int(sizeof Begin) - 1;
        const int labelEnd = text.indexOf(Dashes, label);
        PemBlock block;
        block.begin = position;
        block.label = labelEnd < 0 ? QByteArray() : text.mid(label, labelEnd - label);
        const QByteArray endMark = End + block.label + Dashes;
        const int body = labelEnd + int(sizeof Dashes) - 1;
        const int next = text.indexOf(Begin, label);
        const int end =
            labelEnd < 0 || block.label.contains('\n') ? -1 : text.indexOf(endMark, body);
        block.end = lineEnd(text, end + endMark.size());
        if (end >= 0 && (next < 0 || end < next) && readBody(text.mid(body, end - body), &block))
            blocks += block;
        else if (broken)
            ++*broken;
        position = next;
    }
    return blocks;
}

QByteArray readPem(const QString &text, const QList<QByteArray> &labels)
{
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
    for (int i = 0; i < encoded.size(); i += LineLength)
        text += encoded.mid(i, LineLength) + '\n';
    return text + End + label + Dashes + '\n';
}

} // namespace Trivex
