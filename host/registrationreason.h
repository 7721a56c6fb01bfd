#pragma once

/// Reasons of a re-registration with the tax authority.
enum RegistrationReason : int {
    ReasonFnChange = 1,
    ReasonOfdChange = 2,
    ReasonUserRequisitesChange = 3,
    ReasonSettingsChange = 4
};
