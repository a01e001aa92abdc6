#pragma once
// The rule for text typed or pasted into a one-line box: line breaks become spaces, any other
// control character (or a broken surrogate pair) is refused, and widths count characters (code
// points), so a cut never splits a character in two.
#include <QString>

namespace tr::text {

// CR, LF, CRLF, NEL, U+2028 and U+2029 each become one space.
QString joinLines(const QString& text);
// A control character other than the line breaks above, or half of a surrogate pair.
bool hasForbiddenCharacter(const QString& text);
// Characters, not UTF-16 units: an emoji counts one.
qsizetype characterCount(const QString& text);
// The first `count` characters (all of `text` when it is shorter).
QString leftCharacters(const QString& text, qsizetype count);

// A one-line box whose text goes to a column of `width` characters.
struct LineField {
    QString caption;  // how the messages name the box
    int width = 0;
    // Cut to the width (descriptions, names) rather than refused (numbers, codes).
    bool cut = false;
};

// The box's text after the line-break rule and, for a field that cuts, the cut.
QString cleanLine(const LineField& field, const QString& text);
// Empty when `text` may be saved in the field; else the refusal in the system's words.
QString lineRefusal(const LineField& field, const QString& text);

}  // namespace tr::text
