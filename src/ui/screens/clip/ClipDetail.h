// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/settings/AppSettings.h"
#include "library/clips/ClipLibrary.h"
#include "library/thumbnails/ThumbnailCache.h"
#include "ui/screens/clip/ClipExports.h"
#include "ui/screens/clip/ClipFrames.h"
#include "ui/screens/library/ClipCommands.h"
#include "ui/shared/Navigation.h"

#include <QObject>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

namespace quelto {

/// What the page of a clip shows, and the commands that it offers. Exports that it starts outlive it.
///
/// A command on a clip that no longer exists ends in a toast.
///
/// Thread: main.
class ClipDetail : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The clip's file. Can be set once.
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY pathChanged)

    Q_PROPERTY(QString title READ title NOTIFY pathChanged)
    /// The title that the user gave the clip; empty if there is none.
    Q_PROPERTY(QString editableTitle READ editableTitle NOTIFY pathChanged)
    Q_PROPERTY(QString game READ game NOTIFY pathChanged)
    /// The tag of an automatic clip's tier; empty for other clips.
    Q_PROPERTY(QString tier READ tier NOTIFY pathChanged)
    Q_PROPERTY(QString tierLabel READ tierLabel NOTIFY pathChanged)
    /// Undefined without a tier.
    Q_PROPERTY(QVariant score READ score NOTIFY pathChanged)
    Q_PROPERTY(QString dateText READ dateText NOTIFY pathChanged)
    Q_PROPERTY(QString sizeText READ sizeText NOTIFY pathChanged)
    /// Units: bytes.
    Q_PROPERTY(qint64 size READ size NOTIFY pathChanged)

    /// These are a dash while or if they are unknown.
    Q_PROPERTY(QString durationText READ durationText NOTIFY infoChanged)
    Q_PROPERTY(QString resolutionText READ resolutionText NOTIFY infoChanged)
    Q_PROPERTY(QString fpsText READ fpsText NOTIFY infoChanged)

    /// Whether the clip is being exported, or waits for it.
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY runChanged)
    Q_PROPERTY(QString busyText READ busyText NOTIFY runChanged)
    /// Units: 0 to 1.
    Q_PROPERTY(double progress READ progress NOTIFY runChanged)

    /// Whether a frame of the clip is being saved.
    Q_PROPERTY(bool isSavingFrame READ isSavingFrame NOTIFY savingFrameChanged)

    /// The copy that was made for Discord since the page was opened; empty without one.
    Q_PROPERTY(QString discordPath READ discordPath NOTIFY sharedChanged)
    /// The file to share: the copy for Discord if there is one, otherwise the clip.
    Q_PROPERTY(QString sharedPath READ sharedPath NOTIFY sharedChanged)
    Q_PROPERTY(QString sharedSizeText READ sharedSizeText NOTIFY sharedChanged)
    /// Discord's limit for uploads. Units: megabytes of 1,000,000 bytes.
    Q_PROPERTY(int limitMB READ limitMB NOTIFY limitChanged)
    /// Whether the clip is too large for Discord and has no smaller copy.
    Q_PROPERTY(bool isAboveLimit READ isAboveLimit NOTIFY aboveLimitChanged)

    /// The shapes of an export, as texts to show and to pass to exportAspect.
    Q_PROPERTY(QStringList aspects READ aspects CONSTANT)
    Q_PROPERTY(QString defaultAspect READ defaultAspect CONSTANT)
    /// The ways to fill them, to pass to exportAspect. See fillLabel for the texts to show.
    Q_PROPERTY(QStringList fills READ fills CONSTANT)
    Q_PROPERTY(QString defaultFill READ defaultFill CONSTANT)

public:
    /// All outlive the object.
    struct Dependencies {
        ClipExports& exports;
        ClipFrames& frames;
        ClipLibrary& library;
        ThumbnailCache& thumbnails;
        ClipCommands& commands;
        const AppSettings& settings;
        Navigation& navigation;
    };

    /// For QML; uses the instance of ClipPageForQml.
    explicit ClipDetail(QObject* parent = nullptr);
    explicit ClipDetail(const Dependencies& dependencies, QObject* parent = nullptr);

    QString path() const { return m_path; }
    void setPath(const QString& path);

    QString title() const { return m_clip.visibleTitle(); }
    QString editableTitle() const { return m_clip.hasDefaultTitle() ? QString() : m_clip.title; }
    QString game() const { return m_clip.game; }
    QString tier() const { return m_clip.autoTier ? tagOf(*m_clip.autoTier) : QString(); }
    QString tierLabel() const { return m_clip.autoTier ? labelOf(*m_clip.autoTier) : QString(); }
    QVariant score() const { return m_clip.autoTier ? QVariant(m_clip.autoScore) : QVariant(); }
    QString dateText() const;
    QString sizeText() const { return m_clip.sizeText(); }
    qint64 size() const { return m_clip.size; }

    QString durationText() const;
    QString resolutionText() const;
    QString fpsText() const;

    bool isBusy() const { return run().has_value(); }
    QString busyText() const { return run().value_or(ClipExports::Run()).text; }
    double progress() const { return run().value_or(ClipExports::Run()).progress; }

    bool isSavingFrame() const { return m_dependencies.frames.isSaving(m_path); }

    QString discordPath() const { return m_discordPath; }
    QString sharedPath() const { return m_discordPath.isEmpty() ? m_path : m_discordPath; }
    QString sharedSizeText() const { return m_discordPath.isEmpty() ? sizeText() : m_discordSizeText; }
    int limitMB() const { return m_dependencies.settings.discordLimitMB(); }
    bool isAboveLimit() const;

    static QStringList aspects();
    static QString defaultAspect() { return rawValue(AspectRatio::vertical); }
    static QStringList fills();
    static QString defaultFill() { return rawValue(FillMode::blur); }
    /// In the current language.
    Q_INVOKABLE static QString fillLabel(const QString& fill);

    /// Saves a copy of a part of the clip. Units: seconds.
    Q_INVOKABLE void trim(double start, double end);
    /// Takes one of `aspects` and one of `fills`.
    Q_INVOKABLE void exportAspect(const QString& aspect, const QString& fill);
    /// Saves a copy that is below Discord's limit.
    Q_INVOKABLE void shrink();
    /// Saves the frame that the clip shows at the time as a picture beside the clip, and copies it to the clipboard.
    /// Units: seconds.
    Q_INVOKABLE void saveFrame(double seconds);
    /// Opens the clip under its new name.
    Q_INVOKABLE void rename(const QString& title);
    /// Moves the clip to the trash and closes it.
    Q_INVOKABLE void trash();
    /// Copies the file to share to the clipboard.
    Q_INVOKABLE void copy();
    /// Shows the clip in the file manager.
    Q_INVOKABLE void reveal();

Q_SIGNALS:
    void pathChanged();
    void infoChanged();
    void runChanged();
    void savingFrameChanged();
    void sharedChanged();
    void limitChanged();
    void aboveLimitChanged();

private:
    std::optional<ClipExports::Run> run() const { return m_dependencies.exports.runOf(m_path); }
    void setDiscordPath(const QString& path);
    /// Otherwise shows a toast.
    bool requireFile(const QString& path) const;

    Dependencies m_dependencies;
    QString m_path;
    /// As it was when the page was opened.
    Clip m_clip;
    ClipInfo m_info;
    QString m_discordPath;
    QString m_discordSizeText;
    ThumbnailCache::Ticket m_ticket;
};

} // namespace quelto
