#pragma once
// A small model of the cheque state table, written from the rules rather than taken from the
// product, for the random-walk tests: what each state offers on each side, where a cheque's
// amount stands in each state, and whether an action is legal on a date. The received side's
// cheques first; then our own cheques and received cheques passed on, which move on both sides.
#include <QString>
#include <QStringList>
#include <map>
#include <vector>

namespace tr::procedures::testing::chequemodel {

inline const QString kUndo = QStringLiteral("حذف عمليات قبلي");
inline const std::map<QString, QString> kKindOfName = {
    {QStringLiteral("در جريان وصول"), QStringLiteral("72")}, {QStringLiteral("برگشت چک"), QStringLiteral("78")},
    {QStringLiteral("وصول چک"), QStringLiteral("73")},       {QStringLiteral("واخواست چک"), QStringLiteral("79")},
    {QStringLiteral("کسر موجودي"), QStringLiteral("76")},    {QStringLiteral("برگشت از در جريان وصول"), QStringLiteral("77")},
};

// Every name a step may try: the received side's actions and undo.
inline QStringList actionNames() {
    QStringList names;
    for (const auto& [name, kind] : kKindOfName) names << name;
    return names << kUndo;
}

// The kinds each state offers on the received side (undo as "U").
inline QStringList offered(const QString& state, bool guarantee) {
    if (state == QLatin1String("71")) return guarantee ? QStringList{"78"} : QStringList{"72", "78"};
    if (state == QLatin1String("72")) return {"73", "77", "79", "76", "U"};
    if (state == QLatin1String("76")) return {"73", "79", "77", "U"};
    if (state == QLatin1String("79") || state == QLatin1String("77")) return {"72", "78", "U"};
    return {"U"};  // 73, 78: final
}

// Where a cheque's amount stands in each state (76 moves nothing: it stays in collection).
struct Holding {
    const char* koll;
    const char* moein;
};
inline Holding holding(const QString& state) {
    if (state == QLatin1String("72") || state == QLatin1String("76")) return {"103", "0002"};
    if (state == QLatin1String("73")) return {"102", "0001"};
    if (state == QLatin1String("78")) return {"104", "0001"};
    if (state == QLatin1String("79")) return {"103", "0004"};
    return {"103", "0001"};  // 71, 77
}

struct Step {
    QString state, date;
};

struct Walk {
    QString number;
    bool guarantee = false, opening = false;
    double value = 0;
    std::vector<Step> history{{QStringLiteral("71"), QStringLiteral("1404/02/10")}};
    int stepsLeft = 0;
    const Step& now() const { return history.back(); }
};

inline const QString kDue = QStringLiteral("1404/06/15");

// Whether the model accepts `name` on `date` for the walk.
inline bool legal(const Walk& w, const QString& name, const QString& date) {
    const QStringList menu = offered(w.now().state, w.guarantee);
    if (name == kUndo) return menu.contains(QStringLiteral("U")) && w.history.size() > 1;
    const auto kind = kKindOfName.find(name);
    if (kind == kKindOfName.end() || !menu.contains(kind->second)) return false;
    if (date < QLatin1String("1404/01/01") || date > QLatin1String("1404/12/29")) return false;
    if (date < w.now().date) return false;
    if (kind->second == QLatin1String("73") && date < kDue) return false;
    if (kind->second == QLatin1String("72")) {
        for (const Step& s : w.history)
            if (s.state == QLatin1String("72") && s.date == date) return false;
    }
    return true;
}

// ---- our own cheques and received cheques passed on ------------------------------------------

inline const std::map<QString, QString> kIssuedKindOfName = {
    {QStringLiteral("برداشت چک"), QStringLiteral("82")}, {QStringLiteral("واخواست چک"), QStringLiteral("85")},
    {QStringLiteral("کسر موجودي"), QStringLiteral("86")}, {QStringLiteral("برگشت چک"), QStringLiteral("87")},
    {QStringLiteral("برگشت از خرج چک"), QStringLiteral("88")},
};

inline QStringList issuedActionNames() {
    QStringList names;
    for (const auto& [name, kind] : kIssuedKindOfName) names << name;
    return names << kUndo;
}

// Where a cheque started: received, issued by us, or received and then passed on to a supplier.
enum class Origin { Received, Own, Spent };

struct Cheque {
    QString number;
    Origin origin = Origin::Own;
    bool guarantee = false, opening = false;
    double value = 0;
    std::vector<Step> history;  // from the state its documents left it in
    int stepsLeft = 0;
    const Step& now() const { return history.back(); }
};

// The kinds a side offers the cheque now (undo as "U").
inline QStringList offeredOn(bool issuedSide, const Cheque& c) {
    const QString& s = c.now().state;
    if (c.origin == Origin::Own) {
        if (!issuedSide) return {};
        if (s == QLatin1String("81")) return c.guarantee ? QStringList{"87"} : QStringList{"82", "85", "86", "87"};
        if (s == QLatin1String("85")) return {"82", "87", "U"};
        if (s == QLatin1String("86")) return {"82", "85", "87", "U"};
        return {"U"};  // 82, 87: final
    }
    // A cheque passed on comes back on the issued side and moves on the received side again.
    if (s == QLatin1String("81")) return issuedSide ? QStringList{"88"} : QStringList{};
    if (issuedSide) return {};
    if (s == QLatin1String("88")) return {"72", "78", "U"};
    return offered(s, c.guarantee);
}

inline bool legalOn(bool issuedSide, const Cheque& c, const QString& name, const QString& date) {
    const QStringList menu = offeredOn(issuedSide, c);
    if (name == kUndo) return menu.contains(QStringLiteral("U"));
    const auto& kinds = issuedSide ? kIssuedKindOfName : kKindOfName;
    const auto kind = kinds.find(name);
    if (kind == kinds.end() || !menu.contains(kind->second)) return false;
    if (date < QLatin1String("1404/01/01") || date > QLatin1String("1404/12/29")) return false;
    if (date < c.now().date) return false;
    if ((kind->second == QLatin1String("73") || kind->second == QLatin1String("82")) && date < kDue) return false;
    if (kind->second == QLatin1String("72")) {
        for (const Step& s : c.history)
            if (s.state == QLatin1String("72") && s.date == date) return false;
    }
    return true;
}

inline QString kindOn(bool issuedSide, const QString& name) {
    return name == kUndo ? QString() : (issuedSide ? kIssuedKindOfName : kKindOfName).at(name);
}

// The account (Koll + Moein) a cheque's amount stands on in a state: our cheque as a debt on the
// payable heads, its protest's account, the bank once cashed, the supplier once returned; a
// cheque passed on on the supplier it paid, back in hand from there, then as any received one
// (returned to the customer 104-0002).
inline QString holdingOf(const Cheque& c, const QString& state) {
    if (c.origin == Origin::Own) {
        if (state == QLatin1String("85")) return QStringLiteral("2010003");
        if (state == QLatin1String("82")) return QStringLiteral("1020001");
        if (state == QLatin1String("87")) return QStringLiteral("2020001");
        return QStringLiteral("2010001");  // 81, 86
    }
    if (state == QLatin1String("81")) return QStringLiteral("2020001");
    if (state == QLatin1String("78")) return QStringLiteral("1040002");
    const Holding h = holding(state);
    return QLatin1String(h.koll) + QLatin1String(h.moein);
}

// What the cheque's lines leave on each account (debit positive): its documents' postings, then
// its amount moved from where its documents left it to where it stands now. Our cheque is a
// debt (a credit where it stands); a received one a claim.
inline std::map<QString, double> expectedBalances(const Cheque& c) {
    std::map<QString, double> out;
    const double v = c.value;
    if (!c.opening) {
        if (c.origin != Origin::Own) out[QStringLiteral("1040002")] -= v;  // the customer's receipt
        if (c.origin != Origin::Received) out[QStringLiteral("2020001")] += v;  // the supplier paid
        if (c.origin == Origin::Own) out[QStringLiteral("2010001")] -= v;
        if (c.origin == Origin::Received) out[QStringLiteral("1030001")] += v;
    }
    const double sign = c.origin == Origin::Own ? -1 : 1;
    out[holdingOf(c, c.now().state)] += sign * v;
    out[holdingOf(c, c.history.front().state)] -= sign * v;
    return out;
}

}  // namespace tr::procedures::testing::chequemodel
