// The first-run window: it opens, speaks English from the string table,
// and finishing it records the flag once.
#include "kit/Translations.h"
#include "persistence/PersistenceController.h"
#include "settings/AppSettingsStore.h"
#include "views/OnboardingCoordinator.h"
#include "views/ThemeController.h"
#include "views/UiEngine.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(Tarnwell_ViewsPlugin)

using namespace tarnwell;

class OnboardingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void finishingRecordsTheFlagAndClosesTheWindow()
    {
        Translations translations;
        QVERIFY(translations.install(QStringLiteral("en")));
        PersistenceController store(true);
        AppSettingsStore settings(store);
        ThemeController theme;
        UiEngine ui(theme);
        OnboardingCoordinator onboarding(settings, ui);
        QSignalSpy finished(&onboarding, &OnboardingCoordinator::finished);

        onboarding.show();
        QVERIFY(onboarding.isShowing());
        const auto windows = QGuiApplication::topLevelWindows();
        QCOMPARE(windows.size(), 1);
        QCOMPARE(windows.first()->title(), QStringLiteral("Welcome to Tarnwell"));
        QVERIFY(!settings.onboardingCompleted());

        onboarding.finish();
        QCOMPARE(finished.size(), 1);
        QVERIFY(settings.onboardingCompleted());
        QTRY_VERIFY(!onboarding.isShowing());
    }
};

QTEST_MAIN(OnboardingTest)
#include "tst_onboarding.moc"
