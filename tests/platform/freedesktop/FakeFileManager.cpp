// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeFileManager.h"

#include <gtest/gtest.h>

namespace quelto {

namespace {

const QString Service = QStringLiteral("org.freedesktop.FileManager1");
const QString ObjectPath = QStringLiteral("/org/freedesktop/FileManager1");

} // namespace

FakeFileManager::FakeFileManager()
    : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("file manager")))
{
    EXPECT_TRUE(m_bus.registerObject(ObjectPath, this, QDBusConnection::ExportAllSlots));
    EXPECT_TRUE(m_bus.registerService(Service));
}

FakeFileManager::~FakeFileManager()
{
    m_bus.unregisterService(Service);
    QDBusConnection::disconnectFromBus(m_bus.name());
}

void FakeFileManager::ShowItems(const QStringList& uris, const QString& startupId)
{
    shown.append(uris.join(u' ') + u' ' + startupId);
}

} // namespace quelto
