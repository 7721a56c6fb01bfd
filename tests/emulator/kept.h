#pragma once

#include "register/entrytags.h"
#include "register/register.h"
#include "register/tlv.h"

#include <gtest/gtest.h>
#include <QJsonDocument>

/// The fiscal drive has kept all that the journal says of its documents.
inline void expectAllKept(emulator::Register& device)
{
    const auto text = [](const QJsonObject& object) { return QJsonDocument(object).toJson().toStdString(); };
    int documents = 0;
    for (const QJsonObject& entry : device.journal().entries()) {
        if (!entry.contains("number"))
            continue;
        ++documents;
        const auto stored = device.drive().documentsFrom(static_cast<quint32>(entry.value("number").toInt()));
        ASSERT_FALSE(stored.isEmpty());
        const auto requisites = emulator::tlv::decode(stored.constFirst().record.tags);
        ASSERT_TRUE(requisites.has_value());
        EXPECT_EQ(text(emulator::entrytags::fromTags(*requisites)), text(entry));
    }
    EXPECT_GT(documents, 0);
}
