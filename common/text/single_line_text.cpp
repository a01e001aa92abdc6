#include "common/text/single_line_text.h"

namespace tr::text {

namespace {

bool isLineBreak(char16_t c) {
    return c == u'\r' || c == u'\n' || c == 0x0085 || c == 0x2028 || c == 0x2029;
}

}  // namespace

QString joinLines(const QString& text) {
    QString out;
    out.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text.at(i).unicode();
        if (!isLineBreak(c)) {
            out += text.at(i);
            continue;
        }
        // A Windows line end is one break.
        if (c == u'\r' && i + 1 < text.size() && text.at(i + 1) == u'\n') ++i;
        out += u' ';
    }
    return out;
}

bool hasForbiddenCharacter(const QString& text) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c.isHighSurrogate()) {
            if (i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
                ++i;
                continue;
            }
            return true;
        }
        if (c.isLowSurrogate()) return true;
        // Cc only: the joiners and direction marks Persian text needs are format characters.
        if (c.category() == QChar::Other_Control) return true;
    }
    return false;
}

qsizetype characterCount(const QString& text) {
    qsizetype count = 0;
    for (qsizetype i = 0; i < text.size(); ++i, ++count)
        if (text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate())
            ++i;
    return count;
}

QString leftCharacters(const QString& text, qsizetype count) {
    qsizetype units = 0;
    for (qsizetype taken = 0; taken < count && units < text.size(); ++taken) {
        const bool pair = text.at(units).isHighSurrogate() && units + 1 < text.size() &&
                          text.at(units + 1).isLowSurrogate();
        units += pair ? 2 : 1;
    }
    return text.left(units);
}

QString cleanLine(const LineField& field, const QString& text) {
    const QString joined = joinLines(text);
    return field.cut ? leftCharacters(joined, field.width) : joined;
}

QString lineRefusal(const LineField& field, const QString& text) {
    if (hasForbiddenCharacter(text))
        return field.caption + QStringLiteral(" داراي حرف غير مجاز است.");
    if (characterCount(text) > field.width)
        return field.caption + QStringLiteral(" بيش از ") + QString::number(field.width) +
               QStringLiteral(" حرف است.");
    return {};
}

}  // namespace tr::text
