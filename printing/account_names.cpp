#include "printing/account_names.h"

#include "printing/print_values.h"

namespace tr::printing {

QString accountNameColumns() {
    return QStringLiteral(
        ", K.NamHesab As KollNam, M.NamHesab As MoeinNam, T.NamHesab As TafsilyNam, "
        "T2.NamHesab As Tafsily2Nam, P.ProjectNam As ProjectNam");
}

QString accountNameJoins() {
    return QStringLiteral(
        " Left Join Koll As K On (K.Koll = A.Koll) Left Join Moein As M On (M.Koll = A.Koll And "
        "M.Moein = A.Moein) Left Join Tafsily As T On (T.Tafsily = A.Tafsily) Left Join Tafsily2 "
        "As T2 On (T2.Tafsily2 = A.Tafsily2) Left Join M_Project As P On (P.ProjectCod = "
        "A.ProjectCod)");
}

QString accountLastName(tr::db::Query& q) {
    // A level counts only when the line carries its code and the chart gives it a name.
    const std::pair<const char*, const char*> levels[] = {{"ProjectCod", "ProjectNam"},
                                                          {"Tafsily2", "Tafsily2Nam"},
                                                          {"Tafsily", "TafsilyNam"},
                                                          {"Moein", "MoeinNam"},
                                                          {"Koll", "KollNam"}};
    for (const auto& [code, name] : levels) {
        const QString text = textField(q, name);
        if (!textField(q, code).isEmpty() && !text.isEmpty()) return text;
    }
    return {};
}

}  // namespace tr::printing
