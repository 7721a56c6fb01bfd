#include "register/parametertable.h"

#include <limits>

namespace emulator {

namespace {

constexpr int anyNumber = std::numeric_limits<int>::max();

} // namespace

// clang-format off
const QList<ParameterEntry>& parameterTable()
{
    using enum ParameterEntry::Kind;
    static const QList<ParameterEntry> table{
        {1, 0, Number, 1, 9999, false, u"1"},
        {2, 0, Number, 1, anyNumber, false, u"1"},
        {4, 0, Number, 0, 1, false, u"0"},
        {5, 0, Number, 0, 1, false, u"1"},
        {6, 0, Number, 0, 1, false, u"0"},
        {7, 0, Number, 1, anyNumber, false, u"1"},
        {8, 0, Number, 0, 1, false, u"0"},
        {11, 0, Number, 0, anyNumber, false, u"1"},
        {12, 0, Number, 1, anyNumber, false, u"1"},
        {13, 0, Number, 0, 3, false, u"0"},
        {20, 0, Text, 0, -1, false, u"ООО \"РОМАШКА\""},
        {20, 1, Text, 0, -1, false, u"МАГАЗИН № 1"},
        {20, 2, Text, 0, -1, false, u""},
        {20, 3, Text, 0, -1, false, u""},
        {21, 0, Text, 0, -1, false, u"СПАСИБО ЗА ПОКУПКУ!"},
        {21, 1, Text, 0, -1, false, u""},
        {22, 0, Text, 0, 30, true, u"НАЛИЧНЫМИ"},
        {22, 1, Text, 0, 30, true, u"БЕЗНАЛИЧНЫМИ"},
        {22, 2, Text, 0, 30, true, u"ПРЕДВАРИТЕЛЬНАЯ ОПЛАТА (АВАНС)"},
        {22, 3, Text, 0, 30, true, u"ПОСЛЕДУЮЩАЯ ОПЛАТА (КРЕДИТ)"},
        {22, 4, Text, 0, 30, true, u"ИНАЯ ФОРМА ОПЛАТЫ"},
        // The device has rows for its first six rates alone; those of 5, 7 and 22 % have a code and no row.
        {23, 0, Text, 0, 30, true, u"НДС 20%"},
        {23, 1, Text, 0, 30, true, u"НДС 10%"},
        {23, 2, Text, 0, 30, true, u"НДС 20/120"},
        {23, 3, Text, 0, 30, true, u"НДС 10/110"},
        {23, 4, Text, 0, 30, true, u"НДС 0%"},
        {23, 5, Text, 0, 30, true, u"БЕЗ НДС"},
        {24, 0, Percent, 0, -1, true, u"20.00"},
        {24, 1, Percent, 0, -1, true, u"10.00"},
        {24, 2, Percent, 0, -1, true, u"20.00"},
        {24, 3, Percent, 0, -1, true, u"10.00"},
        {24, 4, Percent, 0, -1, true, u"0.00"},
        {24, 5, Percent, 0, -1, true, u"0.00"},
        {25, 0, Text, 0, 40, false, u""},
        // The groups of goods alone count from 1.
        {26, 1, Text, 0, 40, false, u""},
        {26, 2, Text, 0, 40, false, u""},
        {26, 3, Text, 0, 40, false, u""},
        {26, 4, Text, 0, 40, false, u""},
        {26, 5, Text, 0, 40, false, u""},
        {26, 6, Text, 0, 40, false, u""},
        {27, 0, Text, 0, 40, false, u""},
        {30, 0, Number, 0, 1, false, u"0"},
        {31, 0, Text, 4, 4, false, u"QZXW"},
        {37, 0, Number, 0, anyNumber, false, u"0"},
        {38, 0, Number, 0, 1, false, u"0"},
        {40, 0, Number, 0, anyNumber, false, u"0"},
        {41, 0, Number, 1, 128, false, u"20"},
        {41, 1, Number, 10, 10, true, u"10"},
        {41, 2, Number, 6, 9, false, u"8"},
        {41, 3, Number, 7, 9, false, u"8"},
        {41, 4, Number, 7, 10, false, u"9"},
        {50, 0, Text, 20, 20, true, u"00103000000012345678"},
        {51, 0, Number, 0, 1, false, u"1"},
        {52, 0, Text, 7, 15, false, u"192.168.0.10"},
        {53, 0, Text, 7, 15, false, u"192.168.0.1"},
        {54, 0, Text, 7, 15, false, u"255.255.255.0"},
        {55, 0, Number, 0, 1, false, u"0"},
        {56, 0, Text, 7, 15, false, u"0.0.0.0"},
        {57, 0, Number, 0, 65535, false, u"0"},
        {58, 0, Text, 7, 15, false, u"0.0.0.0"},
        {59, 0, Text, 7, 15, false, u"0.0.0.0"},
        {60, 0, Number, 0, 1, false, u"1"},
        {62, 0, Text, 0, 40, false, u"ofd.example"},
        {63, 0, Number, 0, 65535, false, u"7777"},
        {64, 0, Text, 0, 64, false, u"www.nalog.gov.ru"},
        {65, 0, Text, 0, 64, false, u"check@shop.example"},
        {67, 0, Number, 0, 6, false, u"1"},
        {68, 0, Number, 0, 65535, false, u"7778"},
        {70, 0, Text, 17, 17, false, u"02:00:00:00:00:01"},
        {71, 0, Text, 0, 40, false, u"mark.example"},
        {72, 0, Number, 0, 65535, false, u"7790"},
        {73, 0, Number, 250, 60000, false, u"5000"},
        {74, 0, Text, 0, 40, false, u"keys.example"},
        {75, 0, Number, 0, 65535, false, u"7791"},
        {81, 0, Number, 0, 1, false, u"0"},
        {82, 0, Date, 6, 6, false, u"010119"},
    };
    return table;
}
// clang-format on

} // namespace emulator
