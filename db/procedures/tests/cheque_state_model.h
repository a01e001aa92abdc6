#pragma once
// A small model of the received side of the cheque state table, written from the rules rather
// than taken from the product, for the random-walk tests: what each state offers, where a
// cheque's amount stands in each state, and whether an action is legal on a date.
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

}  // namespace tr::procedures::testing::chequemodel
