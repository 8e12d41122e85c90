#pragma once

#include <cstddef>
#include <cstdint>

#include <QByteArray>
#include <QString>

/// What a target shares with the others. An application of its own, offscreen and with a
/// settings store of its own, is made before the first input; the developer's settings are
/// neither read nor written.

/// Ends the run with @p what unless @p holds: the fuzzer keeps the input as a crash.
void require(bool holds, const char *what);
/// As above, with a detail that is printed behind @p what.
void require(bool holds, const char *what, const QString &detail);

/// Catches Qt's warnings, which are otherwise dropped: a text that a million inputs
/// print is of no use.
void onWarning(void (*handler)(const QString &text));

/// The bytes of one input, taken piece by piece from the front. Where none are left, a piece
/// is empty or 0. Every target makes one for each input, which with the sanitizers looks now and
/// then for memory that earlier inputs have lost.
class Input
{
public:
    Input(const std::uint8_t *data, std::size_t size);

    /// One byte as a number from 0 to @p count - 1.
    int choice(int count);
    /// One bit of a byte.
    bool flag() { return choice(2) != 0; }
    /// The bytes up to the next line feed, which is dropped.
    QByteArray line();
    /// All that is left.
    QByteArray rest();

private:
    QByteArray bytes;
    qsizetype next = 0;
};

/// The bytes as text: UTF-8, or with @p wide their pairs as UTF-16, among them surrogates that
/// stand alone.
QString textOf(const QByteArray &bytes, bool wide);
