#pragma once

#include "register/drivememory.h"
#include "register/identity.h"
#include "register/state.h"

namespace emulator {

// The register itself, its fiscal drive, drawer and paper as the state has them. Archive is StateWriter or
// StateReader.

template <typename Archive>
void describe(Archive& archive, typename Archive::template Access<Identity>& identity)
{
    archive.field("model", identity.model);
    archive.field("serialNumber", identity.serialNumber);
}

template <typename Archive>
void describe(Archive& archive, typename Archive::template Access<DriveMemory>& drive)
{
    archive.field("number", drive.number);
    archive.field("expiry", drive.expiry);
    archive.field("phase", drive.phase);
    archive.field("documentsLeft", drive.documentsLeft);
    archive.field("documents", drive.documents);
    archive.field("sent", drive.sent);
}

template <typename Archive>
void describe(Archive& archive, typename Archive::template Access<Registration>& registration)
{
    archive.field("number", registration.number);
    archive.field("taxSite", registration.taxSite);
    archive.field("userInn", registration.userInn);
    archive.field("userName", registration.userName);
    archive.field("address", registration.address);
    archive.field("place", registration.place);
    archive.field("operatorInn", registration.operatorInn);
    archive.field("operatorName", registration.operatorName);
    archive.field("taxSystems", registration.taxSystems);
    archive.field("modes", registration.modes);
    archive.field("agents", registration.agents);
    archive.field("senderMail", registration.senderMail);
}

template <typename Archive>
void describe(Archive& archive, typename Archive::template Access<Drawer>& drawer)
{
    archive.field("cash", drawer.cash);
    archive.field("openedAt", drawer.openedAt);
}

template <typename Archive>
void describe(Archive& archive, typename Archive::template Access<WaitingPage>& waiting)
{
    archive.field("document", waiting.document);
    archive.field("page", waiting.page);
}

template <typename Archive>
void describe(Archive& archive, typename Archive::template Access<Paper>& paper)
{
    archive.field("isIn", paper.isIn);
    archive.field("linesLeft", paper.linesLeft);
    archive.field("endsQuietly", paper.endsQuietly);
    archive.field("waiting", paper.waiting);
}

template <typename Archive>
void describe(Archive& archive, typename Archive::template Access<MarkingTable>& marking)
{
    archive.field("results", marking.results);
    archive.field("notifications", marking.notifications);
}

} // namespace emulator
