// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <keynames/name_path.h>

#include <algorithm>

namespace Velk {

namespace {

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

int digitsEnd(QStringView text, int i)
{
    while (i < text.size() && isDigit(text[i]))
        ++i;
    return i;
}

int sign(int difference)
{
    return difference < 0 ? -1 : (difference > 0 ? 1 : 0);
}

// Numbers of any length: without leading zeros the longer one is the greater one.
int compareNumbers(QStringView a, QStringView b)
{
    while (a.size() > 1 && a.front() == QLatin1Char('0'))
        a = a.mid(1);
    while (b.size() > 1 && b.front() == QLatin1Char('0'))
        b = b.mid(1);
    if (a.size() != b.size())
        return a.size() < b.size() ? -1 : 1;
    return sign(a.compare(b));
}

int compareNaturally(QStringView a, QStringView b)
{
    int i = 0;
    int j = 0;
    while (i < a.size() && j < b.size()) {
        if (isDigit(a[i]) && isDigit(b[j])) {
            const int endOfA = digitsEnd(a, i);
            const int endOfB = digitsEnd(b, j);
            if (const int order = compareNumbers(a.mid(i, endOfA - i), b.mid(j, endOfB - j)))
                return order;
            i = endOfA;
            j = endOfB;
            continue;
        }
        if (a[i] != b[j]) {
            const QChar foldedA = a[i].toCaseFolded();
            const QChar foldedB = b[j].toCaseFolded();
            if (foldedA != foldedB)
                return foldedA < foldedB ? -1 : 1;
        }
        ++i;
        ++j;
    }
    return sign(int(a.size() - i) - int(b.size() - j));
}

} // namespace

QStringView pathSegment(QStringView name, int begin)
{
    const QStringView rest = name.mid(begin);
    const auto length = rest.indexOf(pathSeparator);
    return length < 0 ? rest : rest.left(length);
}

int comparePaths(QStringView a, QStringView b)
{
    const QChar* const mismatch = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first;
    const QChar* begin = mismatch;
    while (begin != a.begin() && *(begin - 1) != pathSeparator)
        --begin;
    const int offset = int(begin - a.begin());

    const QStringView segmentA = pathSegment(a, offset);
    const QStringView segmentB = pathSegment(b, offset);
    if (const int order = compareNaturally(segmentA, segmentB))
        return order;
    if (const int order = sign(segmentA.compare(segmentB)))
        return order;
    // Equal segments where the names differ: one name ends here.
    return sign(int(a.size()) - int(b.size()));
}

QString foldedCase(QStringView text)
{
    QString folded(int(text.size()), Qt::Uninitialized);
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.unicode() < 0x80) {
            folded[i] = c >= QLatin1Char('A') && c <= QLatin1Char('Z') ? QChar(c.unicode() | 0x20) : c;
        } else if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            const uint codePoint = QChar::toCaseFolded(QChar::surrogateToUcs4(c, text[i + 1]));
            folded[i] = QChar(QChar::highSurrogate(codePoint));
            folded[++i] = QChar(QChar::lowSurrogate(codePoint));
        } else {
            folded[i] = c.toCaseFolded();
        }
    }
    return folded;
}

} // namespace Velk
