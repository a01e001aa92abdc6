#pragma once
// The actions screen's issued tab ("چكهاي پرداختي"): our own cheques in any state and received
// cheques passed on while spent, where each stands (Koll ...) and where its action hands it
// (VaKoll ...); "تاييد" through sp_N_Asnad_ChqPayAction_Apply.
#include "cheques/cheque_action_list.h"

namespace tr::cheques {

class IssuedChequeActions : public ChequeActionList {
  public:
    explicit IssuedChequeActions(const tr::Services& services);

    QList<QPair<QString, QString>> columns() const override;

  protected:
    void listCheques() override;
    void fillStanding() override;
    tr::instruments::InstrumentFacts facts() const override;
    void fillAccounts(const QString& kind) override;
    QString applyRefusal(const QString& kind, const QString& number, const QString& date,
                         const QString& due) const override;

  private:
    struct PaidLine {
        QStringList account;
        QString des;
        double value = 0;
    };
    // The lines the cheque's payment debited for it (the party it paid), from its voucher or, for
    // an opening payment, its opening rows.
    QList<PaidLine> paidLines(const QString& number, const QString& series, qint64 serial) const;
    // A return over several of those lines: each line its part, in the split table.
    void splitOverPaidLines(const QString& kind, const QList<PaidLine>& lines);
};

}  // namespace tr::cheques
