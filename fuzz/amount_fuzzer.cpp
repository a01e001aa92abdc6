// Any text typed as an amount is read or refused with a reason, never a crash; what is read shows
// in a form that reads back as the same value.
#include <cmath>
#include <cstdlib>

#include "common/persian/amount.h"
#include "fuzz/fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString text = fuzzText(data, size);
    using namespace tr::persian;
    for (const AmountRules& rules : {AmountRules{}, AmountRules{true, true, 2}}) {
        const AmountReading reading = readAmount(text, rules);
        if (!reading.ok()) {
            if (reading.value != 0 || amountRefusal(reading, text, rules).isEmpty()) std::abort();
            continue;
        }
        if (!std::isfinite(reading.value)) std::abort();
        const AmountReading again = readAmount(formatAmount(reading.value, rules.decimals), rules);
        if (!again.ok() || again.value != reading.value) std::abort();
        printAmount(reading.value);
        amountEditText(roundAmount(reading.value), rules.decimals);
    }
    return 0;
}
