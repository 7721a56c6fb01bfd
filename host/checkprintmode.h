#pragma once

/// Whether the register prints a receipt on paper.
enum CheckPrintMode : int {
    CheckPrintNormal = 0,
    /// The receipt is fiscalised and sent to the customer electronically; nothing is printed.
    CheckPrintNone = 1
};
