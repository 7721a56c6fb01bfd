#pragma once

/// Groups of marked goods. Drivers compare the numbers: 0 is unmarked, 2 is coded as an excise stamp.
enum ExciseMarkType : int {
    MarkNone = 0,
    MarkFur = 1,
    MarkAlcohol = 2,
    MarkTobacco = 3,
    MarkShoes = 4,
    MarkCommon = 5,
    MarkLightIndustry = 6,
    MarkMedicine = 7,
    MarkOther = 8
};
