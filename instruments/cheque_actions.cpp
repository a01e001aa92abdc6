#include "instruments/cheque_actions.h"

namespace tr::instruments {

namespace {

// Built when the table is first asked for, which may be while another unit starts up: no
// namespace-scope texts, whose construction order is not ours.
struct Names {
    QString collect = QStringLiteral("در جريان وصول");
    QString collected = QStringLiteral("وصول چک");
    QString backFromCollection = QStringLiteral("برگشت از در جريان وصول");
    QString protest = QStringLiteral("واخواست چک");
    QString shortfall = QStringLiteral("کسر موجودي");
    QString returned = QStringLiteral("برگشت چک");
    QString cashed = QStringLiteral("برداشت چک");
    QString voided = QStringLiteral("ابطال چک");
    QString backFromSpending = QStringLiteral("برگشت از خرج چک");
    QString undo = QStringLiteral("حذف عمليات قبلي");
};

bool guarantee(const InstrumentFacts& f) { return f.guarantee; }
// A received cheque passed on stands on the issued side until it comes back (88); from there on
// its actions are the received side's again.
bool spentReceived(const InstrumentFacts& f) { return f.paidOut && !f.own && f.side == Side::Issued; }
bool backOnReceivedSide(const InstrumentFacts& f) { return !f.own && f.side == Side::Received; }
bool ownGuarantee(const InstrumentFacts& f) { return f.own && f.guarantee; }
bool own(const InstrumentFacts& f) { return f.own; }

std::vector<MenuRow> menus(const Names& n) {
    std::vector<MenuRow> rows = {
        {QStringLiteral("71"), guarantee, {n.returned}},
        {QStringLiteral("71"), {}, {n.collect, n.returned}},
        {QStringLiteral("72"), {}, {n.collected, n.backFromCollection, n.protest, n.shortfall, n.undo}},
        {QStringLiteral("76"), {}, {n.collected, n.protest, n.backFromCollection, n.undo}},
        {QStringLiteral("79"), {}, {n.collect, n.returned, n.undo}},
        {QStringLiteral("77"), {}, {n.collect, n.returned, n.undo}},
        {QStringLiteral("83"), {}, {}},
        {QStringLiteral("85"), {}, {n.cashed, n.returned, n.undo}},
        {QStringLiteral("86"), {}, {n.cashed, n.protest, n.returned, n.undo}},
        {QStringLiteral("88"), own, {n.voided, n.undo}},
        {QStringLiteral("88"), backOnReceivedSide, {n.collect, n.returned, n.undo}},
        {QStringLiteral("81"), spentReceived, {n.backFromSpending}},
        {QStringLiteral("81"), ownGuarantee, {n.returned}},
        {QStringLiteral("81"), own, {n.cashed, n.protest, n.shortfall, n.returned}},
    };
    for (const char* final : {"73", "78", "80", "82", "87"})
        rows.push_back({QString::fromLatin1(final), {}, {n.undo}});
    return rows;
}

std::vector<ActionKind> kinds(const Names& n) {
    using S = Side;
    // The received side in the order of its drop-down list; a spent cheque comes back ("برگشت از
    // خرج چک") from the issued side, where it stands while spent.
    return {
        {n.collect, S::Received, QStringLiteral("72")},
        {n.returned, S::Received, QStringLiteral("78")},
        {n.collected, S::Received, QStringLiteral("73")},
        {n.protest, S::Received, QStringLiteral("79")},
        {n.shortfall, S::Received, QStringLiteral("76")},
        {n.backFromCollection, S::Received, QStringLiteral("77")},
        {n.cashed, S::Issued, QStringLiteral("82")},
        {n.protest, S::Issued, QStringLiteral("85")},
        {n.shortfall, S::Issued, QStringLiteral("86")},
        {n.returned, S::Issued, QStringLiteral("87")},
        {n.backFromSpending, S::Issued, QStringLiteral("88")},
        {n.voided, S::Issued, QStringLiteral("83")},
    };
}

}  // namespace

const StateActions& chequeActions() {
    static const StateActions table = [] {
        const Names n;
        return StateActions(n.undo, menus(n), kinds(n));
    }();
    return table;
}

}  // namespace tr::instruments
