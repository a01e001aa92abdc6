#pragma once
// The actions screen's received tab ("چكهاي دريافتي"): the received cheques, where each stands
// (VKoll ...) and where its action hands it (VaKoll ...), a return split over the lines it was
// credited to; "تاييد" through sp_N_Asnad_ChqGetAction_Apply.
#include "cheques/cheque_action_list.h"

namespace tr::cheques {

// A line a returned cheque may go back to: one the cheque was credited to, and its part.
struct ReturnLine {
    QStringList account;  // Koll, Moein, Tafsily, Tafsily2, ProjectCod
    QString des;
    double credited = 0;  // shown as "بدهكار"
    double newValue = 0;
};

using ReceivedFilters = ActionFilters;

class ReceivedChequeActions : public ChequeActionList {
  public:
    static const QString kUnlinkQuestion;

    explicit ReceivedChequeActions(const tr::Services& services);

    QList<QPair<QString, QString>> columns() const override { return gridColumns(); }
    static QList<QPair<QString, QString>> gridColumns();

    // The bank account a collection goes to (N_BankHesab.AcountID): its collection accounts
    // become the row's Va-accounts.
    void setBankAccount(qint64 acountId);

    // "انتخاب طرف حساب جهت برگشت چک": the lines the current row's cheque was credited to, with
    // the parts typed so far.
    QList<ReturnLine> returnLines() const;
    // The current row is a return of a cheque credited to more than one line.
    bool returnNeedsSplit() const;
    // The parts typed for those lines, in their order: each no more than its line's credit, all
    // together the cheque's amount; refused with the message otherwise. The return then debits
    // each line its part.
    bool splitReturn(const QList<double>& parts);
    // The parts as typed in the dialog: a text that is no amount is refused with its reason.
    bool splitReturnTyped(const QStringList& typed);

  protected:
    void listCheques() override;
    void fillStanding() override;
    tr::instruments::InstrumentFacts facts() const override;
    void fillAccounts(const QString& kind) override;
    QString dateRefusal(const QString& kind, const QString& date) const override;
    QString applyRefusal(const QString& kind, const QString& number, const QString& date,
                         const QString& due) const override;
    bool confirmApply(const tr::db::Query& chosen, QStringList& alsoRun) override;
};

}  // namespace tr::cheques
