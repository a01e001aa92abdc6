#include "db/schema/demo_company.h"

#include <QStringList>
#include <QVariant>
#include <tuple>
#include <vector>

#include "common/db/sql_literal.h"
#include "db/schema/schema.h"

namespace tr::schema {

namespace {

using Rows = std::vector<QVariantList>;
using tr::db::Connection;

QVariant s(const char* utf8) {
    return QString::fromUtf8(utf8);
}

QString literal(Connection& c, const QVariant& value) {
    if (value.isNull()) return QStringLiteral("Null");
    switch (value.typeId()) {
        case QMetaType::Int:
        case QMetaType::LongLong:
            return tr::db::sqlNumber(value.toLongLong());
        case QMetaType::Double:
            return tr::db::sqlNumber(value.toDouble());
        default:
            return c.text(value.toString());
    }
}

// One multi-row Insert; `columns` is constant text, every value goes through the quoting helper.
void insert(Connection& c, const char* table, const char* columns, const Rows& rows) {
    QStringList tuples;
    for (const QVariantList& row : rows) {
        QStringList values;
        for (const QVariant& value : row) values << literal(c, value);
        tuples << QLatin1Char('(') + values.join(QStringLiteral(", ")) + QLatin1Char(')');
    }
    c.execute(QStringLiteral("Insert Into ") + QLatin1String(table) + QStringLiteral(" (") +
              QLatin1String(columns) + QStringLiteral(") Values ") +
              tuples.join(QStringLiteral(", ")));
}

const QVariant kNone;  // Null
const char* const kActive = "فعال";
const char* const kInactive = "غيرفعال";
const char* const kHas = "دارد";
const char* const kHasNot = "ندارد";

void loadChart(Connection& c) {
    insert(c, "Koll", "Koll, NamHesab, IsActive",
           {{s("101"), s("صندوق"), s(kActive)},
            {s("102"), s("بانک ها"), s(kActive)},
            {s("103"), s("اسناد دريافتني"), s(kActive)},
            {s("104"), s("حسابهاي دريافتني"), s(kActive)},
            {s("105"), s("تنخواه گردان ها"), s(kActive)},
            {s("201"), s("اسناد پرداختني"), s(kActive)},
            {s("202"), s("حسابهاي پرداختني"), s(kActive)},
            {s("301"), s("سرمايه"), s(kActive)},
            {s("401"), s("فروش"), s(kActive)},
            {s("501"), s("هزينه هاي عمومي و اداري"), s(kActive)},
            {s("601"), s("سود و زيان تسعير ارز"), s(kActive)},
            {s("998"), s("حسابهاي انتظامي"), s("")},
            {s("999"), s("حسابهاي راکد"), s(kInactive)}});

    // Koll, Moein, name, active, T1, T2, P, GrohTafsily, GrohTafsily2, GrohProject,
    // TafsilyJoz, Tafsily2Joz, ProjectJoz.
    const QVariant n = kNone;
    insert(c, "Moein",
           "Koll, Moein, NamHesab, IsActive, IsTafsily1, IsTafsily2, IsProject, GrohTafsily, "
           "GrohTafsily2, GrohProject, TafsilyJoz, Tafsily2Joz, ProjectJoz",
           {{s("101"), s("0001"), s("صندوق ريالي"), s(kActive), s(kHas), s(kHasNot), s(kHasNot),
             s("10"), n, n, n, n, n},
            {s("101"), s("0002"), s("صندوق ارزي"), s(kActive), s(kHas), s(kHasNot), s(kHasNot), n,
             n, n, s("11001"), n, n},
            {s("102"), s("0001"), s("حسابهاي بانکي ريالي"), s(kActive), s(kHas), s(kHasNot),
             s(kHasNot), s("20"), n, n, n, n, n},
            {s("102"), s("0002"), s("حسابهاي بانکي ارزي"), s(kActive), s(kHas), s(kHasNot),
             s(kHasNot), n, n, n, s("20004"), n, n},
            {s("103"), s("0001"), s("چکهاي دريافتني"), s(kActive), s(kHasNot), s(kHasNot),
             s(kHasNot), n, n, n, n, n, n},
            {s("103"), s("0002"), s("چکهاي در جريان وصول"), s(kActive), s(kHas), s(kHasNot),
             s(kHasNot), s("20"), n, n, n, n, n},
            {s("103"), s("0003"), s("سفته هاي دريافتني"), s(kActive), s(kHasNot), s(kHasNot),
             s(kHasNot), n, n, n, n, n, n},
            {s("103"), s("0004"), s("چکهاي واخواستي"), s(kActive), s(kHas), s(kHasNot), s(kHasNot),
             s("30"), n, n, n, n, n},
            {s("104"), s("0001"), s("بدهکاران تجاري"), s(kActive), s(kHas), s(kHas), s(kHas),
             s("30"), s("50"), n, n, n, s("P0001,P0002")},
            {s("104"), s("0002"), s("ساير بدهکاران"), s(kActive), s(kHas), s(kHasNot), s(kHasNot),
             s("40"), n, n, n, n, n},
            {s("105"), s("0001"), s("تنخواه گردان کارکنان"), s(kActive), s(kHas), s(kHasNot),
             s(kHasNot), s("40"), n, n, n, n, n},
            {s("201"), s("0001"), s("چکهاي پرداختني"), s(kActive), s(kHas), s(kHasNot), s(kHasNot),
             s("20"), n, n, n, n, n},
            {s("201"), s("0002"), s("سفته هاي پرداختني"), s(kActive), s(kHasNot), s(kHasNot),
             s(kHasNot), n, n, n, n, n, n},
            {s("201"), s("0003"), s("چکهاي پرداختني واخواستي"), s(kActive), s(kHasNot), s(kHasNot),
             s(kHasNot), n, n, n, n, n, n},
            {s("202"), s("0001"), s("بستانکاران تجاري"), s(kActive), s(kHas), s(kHasNot),
             s(kHasNot), s("30"), n, n, s("40001"), n, n},
            {s("301"), s("0001"), s("سرمايه ثبت شده"), s(kActive), s(kHasNot), s(kHasNot),
             s(kHasNot), n, n, n, n, n, n},
            {s("401"), s("0001"), s("فروش کالا"), s(kActive), s(kHasNot), s(kHasNot), s(kHas), n, n,
             s("P0"), n, n, n},
            {s("501"), s("0001"), s("هزينه حقوق و دستمزد"), s(kActive), s(kHas), s(kHas),
             s(kHasNot), n, s("50"), n, s("60001,60002"), n, n},
            {s("501"), s("0009"), s("هزينه هاي متفرقه"), s(kInactive), s(kHasNot), s(kHasNot),
             s(kHasNot), n, n, n, n, n, n},
            {s("601"), s("0001"), s("سود و زيان تسعير ارز"), s(kActive), s(kHasNot), s(kHasNot),
             s(kHasNot), n, n, n, n, n, n},
            {s("998"), s("0001"), s("اسناد تضميني"), s(kActive), s(kHasNot), s(kHasNot), s(kHasNot),
             n, n, n, n, n, n},
            {s("999"), s("0001"), s("حساب راکد"), s(kActive), s(kHasNot), s(kHasNot), s(kHasNot), n,
             n, n, n, n, n}});

    insert(c, "Tafsily",
           "Tafsily, NamHesab, IsActive, GrohTafsily2, Tafsily2Joz, GrohProject, ProjectJoz",
           {{s("10001"), s("صندوق مرکزي"), s(kActive), n, n, n, n},
            {s("10002"), s("صندوق فروشگاه"), s(kActive), n, n, n, n},
            {s("11001"), s("صندوق ارزي دلار"), s(kActive), n, n, n, n},
            {s("20001"), s("بانک ملي شعبه مرکزي"), s(kActive), n, n, n, n},
            {s("20002"), s("بانک تجارت شعبه ميرداماد"), s(kActive), n, n, n, n},
            {s("20003"), s("بانک صادرات شعبه انقلاب"), s(kActive), n, n, n, n},
            {s("20004"), s("بانک ملي شعبه ونک - ارزي"), s(kActive), n, n, n, n},
            {s("30001"), s("شرکت پخش البرز"), s(kActive), s("51"), n, n, n},
            {s("30002"), s("فروشگاه زنجيره اي آفتاب"), s(kActive), n, n, n, s("P0002")},
            {s("30003"), s("بازرگاني نگين"), s(kActive), n, n, n, n},
            {s("30009"), s("مشتري راکد"), s(kInactive), n, n, n, n},
            {s("40001"), s("علي رضايي"), s(kActive), n, n, n, n},
            {s("40002"), s("مريم احمدي"), s(kActive), n, n, n, n},
            {s("60001"), s("حقوق پايه"), s(kActive), n, n, n, n},
            {s("60002"), s("اضافه کار"), s(kActive), n, n, n, n},
            {s("60003"), s("پاداش"), s(kActive), n, n, n, n}});

    insert(c, "Tafsily2", "Tafsily2, NamHesab, RecogName, IsActive, IsPosHesab, DesChar",
           {{s("50001"), s("تهران"), s("THR"), s(kActive), s(kHas), n},
            {s("50002"), s("اصفهان"), s("IFN"), s(kActive), s(kHas), n},
            {s("51001"), s("شيراز"), s("SYZ"), s(kActive), s(kHas), n},
            {s("50009"), s("تبريز"), s("TBZ"), s(kInactive), s(kHas), n}});

    insert(c, "M_Project", "ProjectCod, ProjectNam, RecogName, IsActive, IsPosHesab, DesChar",
           {{s("P0001"), s("پروژه ساختمان مرکزي"), n, s(kActive), s(kHas), n},
            {s("P0002"), s("پروژه توسعه فروش"), n, s(kActive), s(kHas), n},
            {s("P0009"), s("پروژه خاتمه يافته"), n, s(kInactive), s(kHas), n}});

    insert(c, "Person", "Code, [Name], Family, Tafsily",
           {{s("1001"), s("علي"), s("رضايي"), s("40001")},
            {s("1002"), s("مريم"), s("احمدي"), s("40002")},
            {s("1003"), s("حسين"), s("کريمي"), n}});

    insert(c, "N_ManabehG", "ManabehGCod, ManabehGNam",
           {{s("1"), s("منابع")}, {s("2"), s("مصارف")}});
    insert(c, "N_ManabehZG", "ManabehGCod, ManabehZGCod, ManabehZGNam",
           {{s("1"), s("01"), s("فروش")},
            {s("1"), s("02"), s("تسهيلات بانکي")},
            {s("2"), s("01"), s("هزينه هاي جاري")},
            {s("2"), s("02"), s("خريد دارايي")}});
    insert(c, "N_Manabeh",
           "ManabehCod, ManabehNam, ManabehGCod, ManabehZGCod, ManabehType, IsActive",
           {{s("10101"), s("فروش نقدي"), s("1"), s("01"), s("MANABEH"), s(kActive)},
            {s("10201"), s("وام بانکي"), s("1"), s("02"), s("MANABEH"), s(kActive)},
            {s("20101"), s("حقوق و دستمزد"), s("2"), s("01"), s("MASAREF"), s(kActive)},
            {s("20201"), s("خريد تجهيزات"), s("2"), s("02"), s("MASAREF"), s(kActive)}});
}

void loadTreasuryMasters(Connection& c) {
    const QVariant n = kNone;
    insert(c, "N_Arz", "ArzCod, ArzNam",
           {{s("01"), s("دلار آمريکا")}, {s("02"), s("يورو")}, {s("03"), s("درهم امارات")}});

    insert(
        c, "N_Cash",
        "CashCod, CashNam, Koll, Moein, Tafsily, Tafsily2, ProjectCod, ArzCod, IsActive",
        {{s("1"), s("صندوق مرکزي"), s("101"), s("0001"), s("10001"), s(""), s(""), n, s(kActive)},
         {s("2"), s("صندوق فروشگاه"), s("101"), s("0001"), s("10002"), s(""), s(""), s(""),
          s(kActive)},
         {s("3"), s("صندوق ارزي دلار"), s("101"), s("0002"), s("11001"), s(""), s(""), s("01"),
          s(kActive)}});

    insert(c, "N_Tankhah", "PersonCod, Koll, Moein, Tafsily, Tafsily2, ProjectCod, IsActive",
           {{s("1001"), s("105"), s("0001"), s("40001"), s(""), s(""), s(kActive)},
            {s("1002"), s("105"), s("0001"), s("40002"), s(""), s(""), s(kActive)}});

    insert(c, "N_Bank", "BankCod, BankNam",
           {{s("01"), s("بانک ملي")}, {s("02"), s("بانک تجارت")}, {s("03"), s("بانک صادرات")}});
    insert(c, "N_Shoab", "BankCod, ShobehCod, ShobehNam",
           {{s("01"), s("101"), s("شعبه مرکزي")},
            {s("01"), s("102"), s("شعبه ونک")},
            {s("02"), s("201"), s("شعبه ميرداماد")},
            {s("03"), s("301"), s("شعبه انقلاب")}});

    // One statement per account keeps the identities 1..4 in this order.
    const Rows accounts = {
        {s("01"), s("101"), s("0101234567"), s("جاري"), n, s("20001")},
        {s("02"), s("201"), s("2012345678"), s("جاري"), n, s("20002")},
        {s("03"), s("301"), s("3019876543"), s("جاري"), n, s("20003")},
        {s("01"), s("102"), s("0109999999"), s("ارزي"), s("01"), s("20004")},
    };
    for (const QVariantList& a : accounts) {
        const bool foreign = !a[4].isNull();
        insert(c, "N_BankHesab",
               "BankCod, ShobehCod, AcountCod, AcountType, ArzCod, "
               "JKoll, JMoein, JTafsily, JTafsily2, JProjectCod, "
               "AKoll, AMoein, ATafsily, ATafsily2, AProjectCod, "
               "HKoll, HMoein, HTafsily, HTafsily2, HProjectCod, IsActive",
               {{a[0],
                 a[1],
                 a[2],
                 a[3],
                 a[4],
                 s("102"),
                 foreign ? s("0002") : s("0001"),
                 a[5],
                 s(""),
                 s(""),
                 s("201"),
                 s("0001"),
                 a[5],
                 s(""),
                 s(""),
                 s("103"),
                 s("0002"),
                 a[5],
                 s(""),
                 s(""),
                 s(kActive)}});
    }

    insert(c, "N_Cheque", "AcountID, Joz, FirstNum, LastNum, FormCode",
           {{1, s("12"), s("100001"), s("100050"), s("1")},
            {2, s("7"), s("200001"), s("200025"), s("2")},
            {3, s(""), s("300001"), s("300025"), s("1")},
            {4, s("9"), s("400001"), s("400010"), s("1")}});

    insert(c, "N_AsnadDaryaftani", "WhatDoc, Koll, Moein, Tafsily, Tafsily2, ProjectCod, Des",
           {{s("71"), s("103"), s("0001"), s(""), s(""), s(""), s("چکهاي دريافتني")},
            {s("72"), s("103"), s("0002"), s(""), s(""), s(""), s("چکهاي در جريان وصول")},
            {s("79"), s("103"), s("0004"), s(""), s(""), s(""), s("چکهاي واخواستي")},
            {s("85"), s("201"), s("0003"), s(""), s(""), s(""), s("چکهاي پرداختني واخواستي")},
            {s("A1"), s("103"), s("0003"), s(""), s(""), s(""), s("سفته هاي دريافتني")}});

    insert(c, "N_Mojavez", "PMojavezCod, PMojavezNam",
           {{s("01"), s("مبلغ قرارداد")},
            {s("02"), s("کسر حسن انجام کار")},
            {s("03"), s("ماليات تکليفي")}});

    insert(c, "BCK_ChqNaghd",
           "ChqNo, Joz, ChqGetter, mablagh, SarresidDate, DesChq, BankCod, ShobehCod, ShobehNam, "
           "ChqHesabCod, ChqTel, Addres, RelateCod, ChqtCod",
           {{s("552201"), s("45"), s("حامل"), 15000000.0, s("1404/05/10"), s("چک مشتري فروشگاه"),
             s("02"), s("201"), s("شعبه ميرداماد"), s("8800112233"), s("02188776655"),
             s("تهران، خيابان ميرداماد"), s("30002"), 0},
            {s("552202"), s("45"), s("حامل"), 5000000.0, s("1404/06/10"), s("چک تضميني"), s("02"),
             s("201"), s("شعبه ميرداماد"), s("8800112233"), s("02188776655"),
             s("تهران، خيابان ميرداماد"), s("30002"), 2}});

    insert(c, "FixDes", "Koll, Moein, Tafsily, Tafsily2, ProjectCod, FixDes",
           {{s("101"), s("0001"), s(""), s(""), s(""), s("دريافت وجه نقد از مشتري")},
            {s("104"), s("0001"), s(""), s(""), s(""), s("بابت تسويه صورتحساب فروش")},
            {s("104"), s("0001"), s("30001"), s(""), s(""), s("بابت حساب جاري شرکت پخش البرز")},
            {s("501"), s("0001"), s("60001"), s(""), s(""), s("پرداخت حقوق ماهانه")},
            {s(""), s(""), s(""), s(""), s(""), s("بابت ساير موارد")}});
}

void loadRates(Connection& c, bool currentYear) {
    if (!currentYear) {
        insert(c, "N_NerkhArz", "ArzCod, DateNerkh, HourNerkh, Buy, Sell",
               {{s("01"), s("1403/12/20"), s("10:00"), 780000.0, 790000.0},
                {s("02"), s("1403/12/20"), s("10:00"), 850000.0, 865000.0}});
        return;
    }
    insert(c, "N_NerkhArz", "ArzCod, DateNerkh, HourNerkh, Buy, Sell",
           {{s("01"), s("1404/01/10"), s("09:00"), 820000.0, 830000.0},
            {s("01"), s("1404/02/20"), s("09:00"), 845000.0, 855000.0},
            {s("01"), s("1404/02/20"), s("14:30"), 850000.0, 860000.0},
            {s("02"), s("1404/01/10"), s("10:00"), 900000.0, 915000.0},
            {s("02"), s("1404/02/18"), s("11:15"), 930000.0, 945000.0}});
}

struct Invoice {
    const char* number;
    const char* date;
    const char* customer;
    const char* tafsily2;
    const char* project;
    // Kala code, name, count, unit price.
    std::vector<std::tuple<const char*, const char*, double, double>> lines;
    double paidAtTill;   // R_NaghdPay, TypeAction '3'
    double bonRedeemed;  // R_Bon_Tran of a redeemed voucher
};

double invoiceTotal(const Invoice& invoice) {
    double total = 0;
    for (const auto& line : invoice.lines) total += std::get<2>(line) * std::get<3>(line);
    return total;
}

const std::vector<Invoice>& currentInvoices() {
    static const std::vector<Invoice> invoices = {
        {"1001",
         "1404/02/15",
         "30001",
         "51001",
         "P0001",
         {{"K-100", "يخچال فريزر", 2, 12500000}},
         5000000,
         0},
        {"1002",
         "1404/03/02",
         "30002",
         "50001",
         "P0002",
         {{"K-200", "تلويزيون", 1, 8400000}, {"K-300", "جاروبرقي", 3, 1200000}},
         0,
         2000000},
        {"1003",
         "1404/03/20",
         "30001",
         "51001",
         "P0001",
         {{"K-400", "ماشين لباسشويي", 1, 4750000}},
         4750000,
         0},
    };
    return invoices;
}

const std::vector<Invoice>& previousInvoices() {
    static const std::vector<Invoice> invoices = {
        {"950", "1403/11/10", "30002", "50001", "P0002", {{"K-200", "تلويزيون", 2, 9000000}}, 0, 0},
        {"951",
         "1403/12/05",
         "30001",
         "51001",
         "P0001",
         {{"K-300", "جاروبرقي", 5, 1500000}},
         7500000,
         0},
    };
    return invoices;
}

void loadCustomers(Connection& c) {
    insert(
        c, "R_Customer", "CustomerCod, CustomerNam, Koll, Moein, Tafsily, Tafsily2, ProjectCod",
        {{s("30001"), s("شرکت پخش البرز"), s("104"), s("0001"), s("30001"), s("51001"), s("P0001")},
         {s("30002"), s("فروشگاه زنجيره اي آفتاب"), s("104"), s("0001"), s("30002"), s("50001"),
          s("P0002")},
         {s("30003"), s("بازرگاني نگين"), s("104"), s("0001"), s("30003"), s("50002"),
          s("P0001")}});
}

// The invoices' sales rows in the database of their own year.
void loadInvoices(Connection& c, const std::vector<Invoice>& invoices) {
    for (const Invoice& invoice : invoices) {
        insert(c, "R_FactorForosh",
               "SanadNoForosh, SanadDate, CustomerCod, Koll, Moein, Tafsily, Tafsily2, "
               "ProjectCod, SellValue, Des",
               {{s(invoice.number), s(invoice.date), s(invoice.customer), s("104"), s("0001"),
                 s(invoice.customer), s(invoice.tafsily2), s(invoice.project),
                 invoiceTotal(invoice), s("فروش کالا")}});
        Rows lines;
        int raj = 1;
        for (const auto& [code, name, count, price] : invoice.lines) {
            lines.push_back({s(invoice.number), raj++, s(code), s(name), count, price, 0.0, 0.0,
                             count * price});
        }
        insert(c, "R_DetailFactorForosh",
               "SanadNoForosh, Raj, KalaCod, KalaNam, Tedad, UnitPrice, Takhfif, Maliat, "
               "TotalPrice",
               lines);
        if (invoice.paidAtTill > 0) {
            insert(c, "R_NaghdPay", "SanadNoForosh, TypeAction, PayDate, PayValue",
                   {{s(invoice.number), s("3"), s(invoice.date), invoice.paidAtTill}});
        }
        if (invoice.bonRedeemed > 0) {
            const QVariant bon = QString(QStringLiteral("BN-") + QString::fromUtf8(invoice.number));
            insert(c, "R_Bon_Serial", "BonSerial, BonPrice, Status, DocType, SanadNoForosh",
                   {{bon, invoice.bonRedeemed, s("B"), s("F"), s(invoice.number)}});
            insert(c, "R_Bon_Tran", "BonSerial, SanadNoForosh, TranDate, BonPrice",
                   {{bon, s(invoice.number), s(invoice.date), invoice.bonRedeemed}});
        }
    }
}

// The invoices' balances as a period's R_OldFactor lists them; `open` keeps only unpaid ones.
void loadOldFactors(Connection& c, const std::vector<Invoice>& invoices, const char* year,
                    bool openOnly) {
    for (const Invoice& invoice : invoices) {
        const double total = invoiceTotal(invoice);
        const double paid = invoice.paidAtTill + invoice.bonRedeemed;
        if (openOnly && total - paid == 0) continue;
        insert(c, "R_OldFactor",
               "SanadNoForosh, MainDorehMali, DorehMali, FactorDate, CustomerCod, FactorValue, "
               "NaghdValue, NaghdValue1, MandehFactor",
               {{s(invoice.number), s(year), s(year), s(invoice.date), s(invoice.customer), total,
                 paid, paid, total - paid}});
    }
}

QString rightsText(const QStringList& keys, const QStringList& markers) {
    QString text;
    for (const QString& key : keys) {
        for (const QString& marker : markers) text += key + marker;
    }
    return text;
}

QString adminRights() {
    const QStringList screens = {
        QStringLiteral("N_A_CASHGET_"),      QStringLiteral("N_A_CASHPAY_"),
        QStringLiteral("N_A_TANKHAH_"),      QStringLiteral("N_A_VARIZBANK_"),
        QStringLiteral("N_A_BARDASHTBANK_"), QStringLiteral("N_A_HAVALEH_"),
        QStringLiteral("N_A_CHQGET_"),       QStringLiteral("N_A_CHQPAY_"),
        QStringLiteral("N_A_CHQMOJAVEZ_"),   QStringLiteral("N_A_CHQACTION_"),
        QStringLiteral("N_A_CHQTOBANK_"),    QStringLiteral("N_A_EBTALCHQ_"),
        QStringLiteral("N_A_SOFTEHGET_"),    QStringLiteral("N_A_SOFTEHPAY_"),
        QStringLiteral("N_A_SOFTEHACTION_"), QStringLiteral("N_A_TASIRARZ_"),
        QStringLiteral("N_A_FIXDES_"),
    };
    const QStringList markers = {
        QStringLiteral("_ABTAL(Y)"), QStringLiteral("_SABT(Y)"),     QStringLiteral("_EDIT(Y)"),
        QStringLiteral("_DEL(Y)"),   QStringLiteral("_FIRSTCHQ(Y)"), QStringLiteral("_FIRST(Y)"),
        QStringLiteral("_VIEW(Y)"),  QStringLiteral("_OKPRINT(Y)"),
    };
    const QStringList searches = {
        QStringLiteral("CASH(Y)"),    QStringLiteral("TANKHAH(Y)"),
        QStringLiteral("HAVALEH(Y)"), QStringLiteral("BARDASHTBANK(Y)"),
        QStringLiteral("VARIZ(Y)"),   QStringLiteral("CHQPAY(Y)"),
        QStringLiteral("CHQGET(Y)"),
    };
    return rightsText(screens, markers) + rightsText({QStringLiteral("N_A_SEARCH_")}, searches) +
           QStringLiteral("N_A_MOJAVEZ_TAED_MALY(Y)N_A_MOJAVEZ_TAED_AMEL(Y)");
}

QString clerkRights() {
    return rightsText({QStringLiteral("N_A_CASHGET_")},
                      {QStringLiteral("_SABT(Y)"), QStringLiteral("_VIEW(Y)")}) +
           QStringLiteral("N_A_SEARCH_CASH(Y)");
}

void loadUsers(Connection& suite) {
    insert(suite, "SDC_User", "UserId, UserName, FullName",
           {{demo::kAdminUserId, s(demo::kAdminUserName), s("مدير سيستم")},
            {demo::kClerkUserId, s(demo::kClerkUserName), s("سارا محمدي")}});
    for (const char* year : {demo::kPreviousYear, demo::kCurrentYear}) {
        insert(suite, "UserSdcDetail", "UserId, sCode, sYear, ProgNam, Rights",
               {{demo::kAdminUserId, s(demo::kCompanyCode), s(year), s("N"), adminRights()},
                {demo::kClerkUserId, s(demo::kCompanyCode), s(year), s("N"), clerkRights()}});
    }
}

void loadYear(Connection& suite, Connection& company, const char* year, bool current) {
    createCompany(suite, company, QString::fromUtf8(demo::kCompanyCode), QString::fromUtf8(year),
                  QString::fromUtf8(demo::kCompanyName), QString::fromUtf8(demo::kOptionsText));
    loadChart(company);
    loadTreasuryMasters(company);
    loadRates(company, current);
    loadCustomers(company);
    if (current) {
        loadInvoices(company, currentInvoices());
        // The current year also lists the previous year's open invoices (settled from here).
        loadOldFactors(company, previousInvoices(), demo::kPreviousYear, true);
        loadOldFactors(company, currentInvoices(), demo::kCurrentYear, false);
    } else {
        loadInvoices(company, previousInvoices());
        loadOldFactors(company, previousInvoices(), demo::kPreviousYear, false);
    }
}

}  // namespace

void loadDemoCompany(tr::db::Connection& suite, const DatabaseOpener& openDatabase) {
    createSuiteSchema(suite);
    loadUsers(suite);
    const std::unique_ptr<Connection> previous =
        openDatabase(QString::fromUtf8(demo::kPreviousDatabase));
    loadYear(suite, *previous, demo::kPreviousYear, false);
    const std::unique_ptr<Connection> current =
        openDatabase(QString::fromUtf8(demo::kCurrentDatabase));
    loadYear(suite, *current, demo::kCurrentYear, true);
}

}  // namespace tr::schema
