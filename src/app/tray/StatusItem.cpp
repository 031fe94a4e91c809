// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tray/StatusItem.h"

#include "base/language/T.h"
#include "ui/icons/Symbols.h"
#include "ui/theme/Palette.h"

namespace quelto {

namespace {

QString symbolFor(CaptureState state)
{
    switch (state) {
    case CaptureState::Recording:
        return QStringLiteral("record.circle.fill");
    case CaptureState::Error:
        return QStringLiteral("exclamationmark.circle");
    case CaptureState::Idle:
    case CaptureState::Starting:
        break;
    }
    return QStringLiteral("record.circle");
}

} // namespace

StatusItem::StatusItem(const Dependencies& dependencies, ShellCommands commands)
    : m_recorder(dependencies.recorder)
    , m_settings(dependencies.settings)
    , m_hotKeys(dependencies.hotKeys)
    , m_commands(std::move(commands))
{
    connect(&m_menu, &QMenu::aboutToShow, this, &StatusItem::rebuildMenu);
    connect(&m_icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger) {
            m_commands.showWindow();
        }
    });
    connect(&m_settings, &AppSettings::colorThemeChanged, this, &StatusItem::updateIcon);
    connect(&m_settings, &AppSettings::languageChanged, this, &StatusItem::rebuildMenu);
    rebuildMenu();
    m_icon.setContextMenu(&m_menu);
    m_icon.setToolTip(QStringLiteral("Quelto"));
    updateIcon();
    m_icon.show();
}

void StatusItem::updateIcon()
{
    // Panels may be light or dark and do not say which; the accent colour is visible on both.
    const auto color = Palette::find(m_settings.colorTheme()).accent;
    m_icon.setIcon(symbolIcon(symbolFor(m_recorder.stateKind()), color));
}

void StatusItem::rebuildMenu()
{
    m_menu.clear();
    m_menu.addAction(statusLine())->setEnabled(false);
    m_menu.addSeparator();
    auto* save = m_menu.addAction(saveText(), &m_recorder, &Recorder::saveClip);
    save->setEnabled(m_recorder.isActive());
    m_menu.addAction(m_recorder.isActive() ? T("Kaydı Durdur") : T("Kaydı Başlat"), &m_recorder, &Recorder::toggle);
    m_menu.addSeparator();
    m_menu.addAction(T("Quelto'yi Aç"), this, m_commands.showWindow);
    m_menu.addAction(T("Klip Klasörünü Aç"), this, m_commands.openFolder);
    m_menu.addAction(T("Ayarlar…"), this, m_commands.showSettings);
    m_menu.addSeparator();
    m_menu.addAction(T("Çıkış"), QKeySequence(Qt::CTRL | Qt::Key_Q), this, m_commands.quit);
}

QString StatusItem::saveText() const
{
    const auto keys = m_hotKeys.text();
    return keys.isEmpty() ? T("Klip Kaydet") : T("Klip Kaydet ({0})", keys);
}

QString StatusItem::statusLine() const
{
    switch (m_recorder.stateKind()) {
    case CaptureState::Idle:
        return T("Kayıt kapalı");
    case CaptureState::Starting:
        return T("Başlatılıyor…");
    case CaptureState::Recording:
        return T("● Kayıtta — son {0} sn", m_settings.clipLength());
    case CaptureState::Error:
        break;
    }
    return T("Hata — izinleri kontrol edin");
}

} // namespace quelto
