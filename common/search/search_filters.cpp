#include "common/search/search_filters.h"

namespace tr::search {

namespace {

QString twoDigits(const QString& box) {
    const QString t = box.trimmed();
    return t.size() == 1 ? QStringLiteral("0") + t : t;
}

}  // namespace

std::optional<qint64> serialBox(const QString& text) {
    bool ok = false;
    const qint64 n = text.trimmed().toLongLong(&ok);
    return ok ? std::optional<qint64>(n) : std::nullopt;
}

bool DateBoxes::empty() const {
    return day.trimmed().isEmpty() || month.trimmed().isEmpty() || year.trimmed().isEmpty();
}

QString DateBoxes::text() const {
    if (empty()) return {};
    return year.trimmed() + QLatin1Char('/') + twoDigits(month) + QLatin1Char('/') + twoDigits(day);
}

QString wordsCondition(tr::db::Connection& c, const QString& column,
                       const std::array<QString, 3>& words, const std::array<WordJoin, 2>& joins) {
    QString joined;
    for (int i = 0; i < 3; ++i) {
        const QString word = words[i].trimmed();
        if (word.isEmpty()) continue;
        const QString like = column + QStringLiteral(" Like ") +
                             c.text(QStringLiteral("%") + word + QStringLiteral("%"));
        if (joined.isEmpty()) {
            joined = like;
        } else {
            const bool orJoin = joins[i - 1] == WordJoin::Or;
            joined = QStringLiteral("(") + joined +
                     (orJoin ? QStringLiteral(" Or ") : QStringLiteral(" And ")) + like +
                     QStringLiteral(")");
        }
    }
    return joined.isEmpty() ? QString() : QStringLiteral("And (") + joined + QStringLiteral(") ");
}

}  // namespace tr::search
