#pragma once
// Filter pieces the search screens share: a date typed in day, month and year boxes, a number
// box, and description words joined left to right by "And"/"Or" choosers.
#include <QString>
#include <array>
#include <optional>

#include "common/db/connection.h"

namespace tr::search {

// Day, month and year boxes as typed; all empty means "no date".
struct DateBoxes {
    QString day, month, year;
    bool empty() const;
    // "yyyy/mm/dd", or empty when the boxes are empty.
    QString text() const;
};

enum class WordJoin { And, Or };

// What a serial box holds: nothing when it is empty or not a number.
std::optional<qint64> serialBox(const QString& text);

// "And (<column> Like '%w1%' Or ...) " with each chooser joining its word to everything before
// it: ((w1 Or w2) And w3); empty words are skipped. Empty when no word is filled.
QString wordsCondition(tr::db::Connection& c, const QString& column,
                       const std::array<QString, 3>& words, const std::array<WordJoin, 2>& joins);

}  // namespace tr::search
