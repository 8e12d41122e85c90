#pragma once

#include <array>

#include <QChar>
#include <QString>

/// A second opinion on which of two versions is newer, which reads the text character by
/// character and shares nothing with the program.

inline bool isBlank(QChar character)
{
    return character == QLatin1Char(' ')
        || (character >= QLatin1Char('\t') && character <= QLatin1Char('\r'));
}

/// The number of the part that begins at @p from and ends before @p end: decimal digits, which
/// may have one sign before them and blanks of ASCII around. Anything else, and what does not
/// fit into 32 bits, is 0.
inline int versionPart(const QString &text, qsizetype from, qsizetype end)
{
    while (from < end && isBlank(text.at(from)))
        ++from;
    while (end > from && isBlank(text.at(end - 1)))
        --end;
    bool negative = false;
    if (from < end && (text.at(from) == QLatin1Char('-') || text.at(from) == QLatin1Char('+'))) {
        negative = text.at(from) == QLatin1Char('-');
        ++from;
    }
    if (from == end)
        return 0;
    const qint64 limit = negative ? 2147483648 : 2147483647;
    qint64 number = 0;
    for (; from < end; ++from) {
        const char16_t digit = text.at(from).unicode();
        if (digit < u'0' || digit > u'9')
            return 0;
        number = number * 10 + (digit - u'0');
        if (number > limit)
            return 0;
    }
    return int(negative ? -number : number);
}

/// The first three parts between the dots; one that is missing is 0.
inline std::array<int, 3> versionParts(const QString &text)
{
    std::array<int, 3> parts{};
    qsizetype from = 0;
    for (int &part : parts) {
        qsizetype end = from;
        while (end < text.size() && text.at(end) != QLatin1Char('.'))
            ++end;
        part = versionPart(text, from, end);
        if (end == text.size())
            break;
        from = end + 1;
    }
    return parts;
}

/// Whether @p remote is newer than @p local: the first part that differs decides.
inline bool isNewerVersion(const QString &remote, const QString &local)
{
    const std::array<int, 3> theirs = versionParts(remote);
    const std::array<int, 3> ours = versionParts(local);
    for (std::size_t i = 0; i < theirs.size(); ++i) {
        if (theirs[i] != ours[i])
            return theirs[i] > ours[i];
    }
    return false;
}
