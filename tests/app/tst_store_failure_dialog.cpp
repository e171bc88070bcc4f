// The dialog a desktop user sees when the store cannot be opened and no
// notification server answers: it names the file and says it was left
// alone, in the user's language. Saves its pictures for review.
#include "app/StoreFailureNotice.h"
#include "kit/Translations.h"

#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

class StoreFailureDialogTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesTheFileInEachLanguage_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("untouched");
        QTest::addColumn<QString>("close");
        QTest::newRow("en") << "en"
                            << "left untouched"
                            << "Close";
        QTest::newRow("de") << "de"
                            << "nicht verändert"
                            << "Schließen";
    }

    void namesTheFileInEachLanguage()
    {
        QFETCH(QString, language);
        QFETCH(QString, untouched);
        QFETCH(QString, close);
        tarnwell::Translations translations;
        QVERIFY(translations.install(language));
        const QString path = QStringLiteral("/home/ada/.local/share/tarnwell/Tarnwell.sqlite");
        const auto box = tarnwell::makeStoreFailureDialog(path, QStringLiteral("file is not a database"));
        QVERIFY(box->text().contains(path) && box->text().contains(untouched));
        QVERIFY(!box->windowTitle().contains(QLatin1String("store.")));
        QCOMPARE(box->button(QMessageBox::Close)->text(), close);
        box->show();
        QVERIFY(QTest::qWaitForWindowExposed(box.get()));
        const QString folder = qEnvironmentVariable("TARNWELL_ARTIFACTS", QStringLiteral("test-artifacts"));
        QDir().mkpath(folder);
        QVERIFY(box->grab().save(folder + QStringLiteral("/store-failure-dialog-%1.png").arg(language)));
    }
};

QTEST_MAIN(StoreFailureDialogTest)
#include "tst_store_failure_dialog.moc"
