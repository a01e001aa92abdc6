#include "common/persian/amount.h"

#include <QByteArray>
#include <QList>
#include <cfenv>
#include <cmath>

namespace tr::persian {

namespace {

// A double holds every decimal of fifteen significant digits exactly as typed.
constexpr int kMaxSignificantDigits = 15;

int digitValue(QChar c) {
    const char16_t u = c.unicode();
    if (u >= u'0' && u <= u'9') return u - u'0';
    if (u >= 0x06F0 && u <= 0x06F9) return u - 0x06F0;  // Persian
    if (u >= 0x0660 && u <= 0x0669) return u - 0x0660;  // Arabic-Indic
    return -1;
}

// '/' is the Persian decimal mark, as printed amounts show it.
bool isPoint(QChar c) {
    return c == u'.' || c == u'/' || c.unicode() == 0x066B;
}

bool isBlank(QChar c) {
    const char16_t u = c.unicode();
    return u == u' ' || u == u'\t' || u == 0x00A0 || u == 0x2009 || u == 0x202F;
}

// The Persian keyboard's comma is the Arabic comma; both it and the Arabic thousands
// separator group digits, as do blanks.
bool isSeparator(QChar c) {
    return c == u',' || c.unicode() == 0x066C || c.unicode() == 0x060C || isBlank(c);
}

bool isMinus(QChar c) {
    return c == u'-' || c.unicode() == 0x2212;
}

// Direction marks ride along when an amount is copied out of right-to-left text.
bool isDirectionMark(QChar c) {
    const char16_t u = c.unicode();
    return u == 0x200E || u == 0x200F || u == 0x061C;
}

AmountReading refused(AmountProblem problem) {
    AmountReading r;
    r.problem = problem;
    return r;
}

QString fixedText(double value, int decimals) {
    QString text = QString::number(std::fabs(value), 'f', decimals);
    if (text.contains(u'.')) {
        while (text.endsWith(u'0')) text.chop(1);
        if (text.endsWith(u'.')) text.chop(1);
    }
    return text;
}

QString signed_(double rounded, const QString& magnitude) {
    return rounded < 0 && magnitude != QLatin1String("0") ? QLatin1Char('-') + magnitude
                                                          : magnitude;
}

}  // namespace

AmountReading readAmount(QStringView typed, const AmountRules& rules) {
    QString text;
    text.reserve(typed.size());
    for (const QChar c : typed)
        if (!isDirectionMark(c)) text += c;
    qsizetype begin = 0, end = text.size();
    while (begin < end && isBlank(text[begin])) ++begin;
    while (end > begin && isBlank(text[end - 1])) --end;
    if (begin == end) {
        AmountReading r = rules.required ? refused(AmountProblem::Empty) : AmountReading{};
        r.empty = true;
        return r;
    }

    bool negative = false;
    if (isMinus(text[begin])) {
        negative = true;
        ++begin;
    }
    for (qsizetype i = begin; i < end; ++i) {
        const QChar c = text[i];
        if (digitValue(c) < 0 && !isPoint(c) && !isSeparator(c))
            return refused(AmountProblem::NotANumber);
    }

    QByteArray whole, fraction;
    QList<int> groups;  // digits between separators of the whole part
    int group = 0;
    bool point = false;
    bool grouped = false;
    bool badGrouping = false;
    for (qsizetype i = begin; i < end; ++i) {
        const QChar c = text[i];
        const int d = digitValue(c);
        if (d >= 0) {
            (point ? fraction : whole) += char('0' + d);
            if (!point) ++group;
        } else if (isPoint(c)) {
            if (point) return refused(AmountProblem::TwoPoints);
            point = true;
        } else {  // a separator: only between digits of the whole part
            if (point || group == 0) badGrouping = true;
            groups << group;
            group = 0;
            grouped = true;
        }
    }
    if (whole.isEmpty() && fraction.isEmpty()) return refused(AmountProblem::NotANumber);
    if (grouped) {
        groups << group;
        badGrouping = badGrouping || groups.front() > 3;
        for (qsizetype i = 1; i < groups.size(); ++i) badGrouping = badGrouping || groups[i] != 3;
    }
    if (badGrouping) return refused(AmountProblem::Grouping);
    if (negative && !rules.negativeAllowed) return refused(AmountProblem::Negative);

    while (fraction.endsWith('0')) fraction.chop(1);
    if (fraction.size() > rules.decimals) return refused(AmountProblem::TooManyDecimals);
    qsizetype lead = 0;
    while (lead < whole.size() && whole[lead] == '0') ++lead;
    const QByteArray significantWhole = whole.mid(lead);
    qsizetype significant = significantWhole.size() + fraction.size();
    if (significantWhole.isEmpty()) {
        qsizetype zeros = 0;
        while (zeros < fraction.size() && fraction[zeros] == '0') ++zeros;
        significant = fraction.size() - zeros;
    }
    if (significant > kMaxSignificantDigits) return refused(AmountProblem::TooLarge);

    bool ok = false;
    const QByteArray plain = (whole.isEmpty() ? QByteArray("0") : whole) + '.' +
                             (fraction.isEmpty() ? QByteArray("0") : fraction);
    const double magnitude = plain.toDouble(&ok);
    if (!ok || !std::isfinite(magnitude)) return refused(AmountProblem::TooLarge);
    AmountReading r;
    r.value = negative && magnitude != 0 ? -magnitude : magnitude;
    return r;
}

QString amountRefusal(const AmountReading& reading, QStringView text, const AmountRules& rules) {
    QString reason;
    switch (reading.problem) {
        case AmountProblem::None:
            return {};
        case AmountProblem::Empty:
            return QStringLiteral("مبلغ وارد نشده است.");
        case AmountProblem::NotANumber:
            reason = QStringLiteral("مبلغ فقط با رقم، جداكننده سه رقمي و مميز وارد مي شود.");
            break;
        case AmountProblem::Grouping:
            reason = QStringLiteral("جداكننده هاي سه رقمي مبلغ درست نيست.");
            break;
        case AmountProblem::TwoPoints:
            reason = QStringLiteral("مبلغ بيش از يك مميز دارد.");
            break;
        case AmountProblem::Negative:
            reason = QStringLiteral("مبلغ نبايد منفي باشد.");
            break;
        case AmountProblem::TooManyDecimals:
            reason = QStringLiteral("مبلغ حداكثر ") + QString::number(rules.decimals) +
                     QStringLiteral(" رقم اعشار دارد.");
            break;
        case AmountProblem::TooLarge:
            reason = QStringLiteral("مبلغ وارد شده بيش از حد بزرگ است.");
            break;
    }
    return reason + QStringLiteral("\n(مبلغ وارد شده=") + text.trimmed().toString() +
           QLatin1Char(')');
}

double roundAmount(double value, int decimals) {
    const double scale = std::pow(10.0, decimals);
    const double scaled = value * scale;
    // Past 2^53 a double has no fraction left to round.
    if (!std::isfinite(scaled) || std::fabs(scaled) >= 9007199254740992.0) return value;
    const int previous = std::fegetround();
    std::fesetround(FE_TONEAREST);  // nearbyint then rounds half to even
    const double rounded = std::nearbyint(scaled) / scale;
    std::fesetround(previous);
    return rounded == 0 ? 0.0 : rounded;
}

QString formatAmount(double value, int decimals) {
    if (!std::isfinite(value)) return {};
    const double rounded = roundAmount(value, decimals);
    QString digits = fixedText(rounded, decimals);
    const qsizetype point = digits.indexOf(u'.');
    for (qsizetype i = (point < 0 ? digits.size() : point) - 3; i > 0; i -= 3)
        digits.insert(i, u',');
    return signed_(rounded, digits);
}

QString amountEditText(double value, int decimals) {
    if (!std::isfinite(value)) return {};
    const double rounded = roundAmount(value, decimals);
    if (rounded == 0) return {};
    return signed_(rounded, fixedText(rounded, decimals));
}

QString printAmount(double value) {
    QString text = formatAmount(value);
    text.replace(u'.', u'/');
    return persianDigits(text);
}

QString persianDigits(const QString& text) {
    QString out = text;
    for (QChar& c : out)
        if (c >= u'0' && c <= u'9') c = QChar(0x06F0 + (c.unicode() - u'0'));
    return out;
}

}  // namespace tr::persian
