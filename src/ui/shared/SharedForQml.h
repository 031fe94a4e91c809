// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "capture/recorder/Recorder.h"
#include "hotkey/HotKeyManager.h"
#include "library/clips/ClipLibrary.h"
#include "ui/shared/Navigation.h"

#include <QJSEngine>
#include <QtQml/qqml.h>

class QQmlEngine;

/// Registers the objects that all screens share as QML singletons. The composition root owns them and sets each
/// instance before the first QML file loads.
namespace quelto {

template <typename Object> struct SharedForQml {
    static inline Object* instance = nullptr;

    static Object* create(QQmlEngine* /*engine*/, QJSEngine* /*scripts*/)
    {
        QJSEngine::setObjectOwnership(instance, QJSEngine::CppOwnership);
        return instance;
    }
};

struct RecorderForQml : SharedForQml<Recorder> {
    Q_GADGET
    QML_FOREIGN(quelto::Recorder)
    QML_NAMED_ELEMENT(Recorder)
    QML_SINGLETON
};

struct AppSettingsForQml : SharedForQml<AppSettings> {
    Q_GADGET
    QML_FOREIGN(quelto::AppSettings)
    QML_NAMED_ELEMENT(AppSettings)
    QML_SINGLETON
};

struct ClipLibraryForQml : SharedForQml<ClipLibrary> {
    Q_GADGET
    QML_FOREIGN(quelto::ClipLibrary)
    QML_NAMED_ELEMENT(ClipLibrary)
    QML_SINGLETON
};

struct HotKeyManagerForQml : SharedForQml<HotKeyManager> {
    Q_GADGET
    QML_FOREIGN(quelto::HotKeyManager)
    QML_NAMED_ELEMENT(HotKeyManager)
    QML_SINGLETON
};

struct GlobalKeyStateForQml {
    Q_GADGET
    QML_FOREIGN(quelto::GlobalKeyStates)
    QML_NAMED_ELEMENT(GlobalKeyState)
    QML_UNCREATABLE("Provides an enumeration only")
};

struct NavigationForQml : SharedForQml<Navigation> {
    Q_GADGET
    QML_FOREIGN(quelto::Navigation)
    QML_NAMED_ELEMENT(Navigation)
    QML_SINGLETON
};

struct PagesForQml {
    Q_GADGET
    QML_FOREIGN(quelto::Pages)
    QML_NAMED_ELEMENT(Pages)
    QML_UNCREATABLE("Provides an enumeration only")
};

struct CaptureStateForQml {
    Q_GADGET
    QML_FOREIGN(quelto::CaptureStates)
    QML_NAMED_ELEMENT(CaptureState)
    QML_UNCREATABLE("Provides an enumeration only")
};

} // namespace quelto
