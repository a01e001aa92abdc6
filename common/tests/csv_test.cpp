// The CSV a search result is saved as: byte-order mark, quoting, Persian text kept.
#include "common/text/csv.h"

#include <gtest/gtest.h>

TEST(Csv, MarksUtf8AndQuotesOnlyWhatNeedsIt) {
    const QByteArray file = tr::text::csvFile(
        {QStringLiteral("شرح"), QStringLiteral("مبلغ")},
        {{QStringLiteral("دريافت وجه، نقد"), QStringLiteral("1250000")},
         {QStringLiteral("say \"hi\"\nthen"), QString()}});
    ASSERT_TRUE(file.startsWith("\xEF\xBB\xBF"));
    EXPECT_EQ(QString::fromUtf8(file.mid(3)),
              QStringLiteral("شرح,مبلغ\r\n") + QStringLiteral("دريافت وجه، نقد,1250000\r\n") +
                  QStringLiteral("\"say \"\"hi\"\"\nthen\",\r\n"));
    // A Latin comma inside a field is quoted.
    EXPECT_EQ(QString::fromUtf8(tr::text::csvFile({QStringLiteral("a,b")}, {}).mid(3)),
              QStringLiteral("\"a,b\"\r\n"));
}
