// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/shell/ShellFixture.h"

#include "base/language/L10n.h"
#include "ui/icons/Symbols.h"
#include "ui/player/ClipPlayer.h"
#include "ui/screens/clip/ClipPageForQml.h"
#include "ui/screens/library/LibraryForQml.h"
#include "ui/screens/match/MatchPageForQml.h"
#include "ui/screens/matches/MatchesForQml.h"
#include "ui/screens/review/ReviewForQml.h"
#include "ui/screens/settings/SettingsPageForQml.h"
#include "ui/shell/ShellForQml.h"
#include "ui/theme/ThemeForQml.h"

#include <QDir>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Quelto_ThemePlugin)
Q_IMPORT_QML_PLUGIN(Quelto_IconsPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_ClipPagePlugin)
Q_IMPORT_QML_PLUGIN(Quelto_LibraryPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_MatchPagePlugin)
Q_IMPORT_QML_PLUGIN(Quelto_MatchesPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_PlayerPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_ReviewPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_SettingsPagePlugin)
Q_IMPORT_QML_PLUGIN(Quelto_SharedPlugin)
Q_IMPORT_QML_PLUGIN(Quelto_ShellPlugin)

namespace quelto::test {

void ShellFixture::SetUp()
{
    RecorderFixture::SetUp();
    settings.setLanguage(QStringLiteral("tr"));
    settings.setSaveFolder(folder.filePath(QStringLiteral("clips")));
    theme = std::make_unique<Theme>(settings);
    const auto action = [this](const char* name) {
        return [this, name] { requestedActions.append(QLatin1String(name)); };
    };
    commands =
        std::make_unique<WindowCommands>(WindowCommands::Actions{.openFolder = action("openFolder"),
                                                                 .hide = action("hide"),
                                                                 .minimize = action("minimize"),
                                                                 .close = action("close"),
                                                                 .quit = [this] {
                                                                     requestedActions.append(QStringLiteral("quit"));
                                                                     onQuit();
                                                                 }});
    saveFailure = std::make_unique<SaveFailure>(SaveFailure::Dependencies{
        .recorder = *recorder, .settings = settings, .main = main, .work = main, .isWritable = [this](const QString&) {
            return isFolderWritable;
        }});
    library = std::make_unique<ClipLibrary>(
        ClipLibrary::Dependencies{.settings = settings, .trash = trash, .main = main, .work = main});
    matches = std::make_unique<MatchTracker>(
        MatchTracker::Dependencies{.library = *library,
                                   .main = main,
                                   .work = main,
                                   .store = MatchStore(folder.filePath(QStringLiteral("matches.json")))});
    matchClips = std::make_unique<MatchClips>(
        MatchClips::Dependencies{.tracker = *matches, .library = *library, .main = main, .work = main});
    MatchPageForQml::instance.emplace(MatchRecap::Dependencies{.tracker = *matches, .clips = *matchClips});
    MatchesForQml::instance.emplace(MatchList::Dependencies{.tracker = *matches, .clips = *matchClips});
    navigation = std::make_unique<Navigation>(main);
    QObject::connect(matches.get(), &MatchTracker::sessionAboutToBeRemoved, navigation.get(), &Navigation::leaveMatch);
    overview = std::make_unique<LibraryOverview>(*library, *matches);
    clipCommands = std::make_unique<ClipCommands>(
        ClipCommands::Dependencies{.library = *library,
                                   .files = files,
                                   .pasteboard = pasteboard,
                                   .settings = settings,
                                   .navigation = *navigation,
                                   .drag = [this](const QString& path, const QImage&) {
                                       requestedActions.append(QStringLiteral("drag ") + path);
                                   }});
    ClipCommandsForQml::instance = clipCommands.get();
    thumbnails = std::make_unique<ThumbnailCache>(thumbnailQueue);
    ThumbnailsForQml::instance = thumbnails.get();
    exportQueue = std::make_unique<ExportQueue>(exportReplies);
    clipExports = std::make_unique<ClipExports>(ClipExports::Dependencies{
        .queue = *exportQueue,
        .library = *library,
        .navigation = *navigation,
        .operations = {.trim =
                           [this](const QString& clip, const TimeRange& range, const ExportControl&) {
                               return onExport(QStringLiteral("trim %1 %2").arg(range.start).arg(range.end), clip);
                           },
                       .exportAspect =
                           [this](const QString& clip, AspectRatio aspect, FillMode fill, const ExportControl&) {
                               return onExport(tag(aspect) + u' ' + rawValue(fill), clip);
                           },
                       .shrink =
                           [this](const QString& clip, int limitMB, const ExportControl&) {
                               return onExport(QStringLiteral("shrink %1").arg(limitMB), clip);
                           }}});
    clipFrames = std::make_unique<ClipFrames>(
        ClipFrames::Dependencies{.main = main, .work = main, .pasteboard = pasteboard, .navigation = *navigation});
    ClipPageForQml::instance.emplace(ClipDetail::Dependencies{.exports = *clipExports,
                                                              .frames = *clipFrames,
                                                              .library = *library,
                                                              .thumbnails = *thumbnails,
                                                              .commands = *clipCommands,
                                                              .settings = settings,
                                                              .navigation = *navigation});
    ReviewForQml::instance.emplace(
        MatchReview::Dependencies{.tracker = *matches, .clips = *matchClips, .navigation = *navigation});
    updates = std::make_unique<UpdateChecker>(
        UpdateChecker::Dependencies{.file = settings.file(),
                                    .main = main,
                                    .feed = {},
                                    .currentVersion = QStringLiteral("1.3"),
                                    .openUrl = [this](const QUrl& url) { openedUrls.append(url.toString()); },
                                    .now = [] { return 1.7e9; }});
    UpdateCheckerForQml::instance = updates.get();
    LibraryOverviewForQml::instance = overview.get();
    ClipLibraryForQml::instance = library.get();
    NavigationForQml::instance = navigation.get();
    ThemeForQml::instance = theme.get();
    RecorderForQml::instance = recorder.get();
    AppSettingsForQml::instance = &settings;
    WindowCommandsForQml::instance = commands.get();
    SaveFailureForQml::instance = saveFailure.get();
    QuitQuestionForQml::instance = &quitQuestion;
    PlaybackForQml::instance.emplace(
        PlaybackForQml::Parts{.model = {.main = main, .work = [](const Task& task) { task(); }},
                              .createPlayer = [this]() -> std::unique_ptr<Player> {
                                  auto created = std::make_unique<FakePlayer>();
                                  player = created.get();
                                  players.removeAll(nullptr);
                                  players.append(player);
                                  return created;
                              }});
    league = std::make_unique<LeagueWatcher>();
    dota = std::make_unique<DotaWatcher>(folder.path());
    wow = std::make_unique<WoWWatcher>(folder.path());
    hotKeys = std::make_unique<HotKeyManager>(settings, *fakes.platform.globalKey);
    LeagueWatcherForQml::instance = league.get();
    DotaWatcherForQml::instance = dota.get();
    WoWWatcherForQml::instance = wow.get();
    HotKeyManagerForQml::instance = hotKeys.get();
    SettingsPageForQml::instance.emplace(
        SettingsPageParts{.settings = settings,
                          .platform = fakes.platform,
                          .hotKeys = *hotKeys,
                          .scroll = {.main = main, .now = [this] { return time.now(); }},
                          .navigation = *navigation});
    engine = std::make_unique<QQmlApplicationEngine>();
    engine->addImageProvider(QStringLiteral("symbols"), new SymbolProvider);
    engine->addImportPath(QStringLiteral("qrc:/"));
    engine->loadData("import Quelto.Shell\nMainWindow { visible: true }\n");
    ASSERT_FALSE(engine->rootObjects().isEmpty());
    window = qobject_cast<QQuickWindow*>(engine->rootObjects().first());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
}

void ShellFixture::TearDown()
{
    L10n::use(QStringLiteral("tr"));
    engine.reset();
    // Deferred deletions must run before the objects that the items use are destroyed.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QQuickItem* ShellFixture::item(const QString& accessibleName) const
{
    auto* found = itemNamed(window, accessibleName);
    EXPECT_NE(found, nullptr) << "no visible item has the name " << accessibleName.toStdString();
    return found;
}

QString ShellFixture::descriptionOf(const QString& accessibleName) const
{
    auto* const found = item(accessibleName);
    return found == nullptr ? QString() : QAccessible::queryAccessibleInterface(found)->text(QAccessible::Description);
}

QUuid ShellFixture::playMatch(const QList<QByteArray>& clips)
{
    makeClips(clips);
    const auto game = QStringLiteral("League of Legends");
    matches->gameStarted(game, QStringLiteral("Ahri"));
    for (qsizetype i = 0; i < clips.size(); ++i) {
        QFile file(QDir(settings.saveFolder()).filePath(QString::fromUtf8(clips.at(i))));
        EXPECT_TRUE(file.open(QIODevice::ReadWrite));
        const auto age = std::chrono::minutes(clips.size() - i);
        EXPECT_TRUE(
            file.setFileTime(QDateTime::currentDateTime().addDuration(-age), QFileDevice::FileModificationTime));
        matches->clipSaved(file.fileName());
    }
    matches->gameEnded(game);
    time.advance(std::chrono::seconds(10));
    reloadLibrary();
    return matches->sessions().first().id;
}

void ShellFixture::makeClips(const QList<QByteArray>& names)
{
    QDir().mkpath(settings.saveFolder());
    for (const auto& name : names) {
        QFile file(QDir(settings.saveFolder()).filePath(QString::fromUtf8(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    }
    reloadLibrary();
}

void ShellFixture::reloadLibrary()
{
    library->reload();
    time.settle();
    drawFrame();
}

void ShellFixture::openMenu(const QString& title, const QString& entry)
{
    click(title);
    EXPECT_TRUE(QTest::qWaitFor([&] { return shows(entry); })) << entry.toStdString();
}

void ShellFixture::drawFrame() const
{
    QCoreApplication::processEvents();
    window->grabWindow();
}

void ShellFixture::setLook(const Look& look)
{
    window->setMinimumSize({});
    window->resize(look.size);
    settings.setLanguage(QLatin1String(look.language));
    settings.setColorTheme(QLatin1String(look.palette));
    time.settle();
    QTest::qWait(100);
}

QStringList ShellFixture::truncatedTexts() const
{
    QStringList truncated;
    visitVisible(window->contentItem(), [&](const QQuickItem* each) {
        const auto isLine = each->inherits("QQuickText") && each->property("wrapMode").toInt() == 0;
        if (each->property("truncated").toBool() ||
            (isLine && each->property("contentWidth").toReal() > each->width() + 0.5)) {
            truncated.append(each->property("text").toString());
        }
    });
    return truncated;
}

void ShellFixture::click(const QString& accessibleName)
{
    if (const auto* target = item(accessibleName)) {
        QTest::mouseClick(window, Qt::LeftButton, {}, middleOf(target));
    }
}

} // namespace quelto::test
