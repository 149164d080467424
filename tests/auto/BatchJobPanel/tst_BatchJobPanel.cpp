// What a person chooses for a job, and that it is there again the next time.

#include "BatchJobPanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <memory>

#include "ModalDriver.h"
#include "NVSpinBox.h"
#include "TestMain.h"

class tst_BatchJobPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        m_folder = std::make_unique<QTemporaryDir>();
        m_settings = std::make_unique<QSettings>(m_folder->filePath("s.ini"), QSettings::IniFormat);
        make();
    }
    void cleanup() { m_panel.reset(); }

    void atFirstNothingIsChanged()
    {
        const BatchChange change = m_panel->GetChange();

        QCOMPARE(change.resize, BatchChange::KeepSize);
        QCOMPARE(change.rotation, 0);
        QCOMPARE(m_panel->GetRule().folder, QString());
        QCOMPARE(m_panel->GetRule().suffix, QString());
        QVERIFY(m_panel->GetRule().keepsFolders);
    }

    void onlyWhatCountsIsEnabled()
    {
        choose("m_pResize", "Keep the size");
        QVERIFY(!box("m_pWidth")->isEnabled() && !box("m_pPercent")->isEnabled());
        choose("m_pResize", "Fit within");
        QVERIFY(box("m_pWidth")->isEnabled() && box("m_pHeight")->isEnabled());
        QVERIFY(check("m_pEnlarge")->isEnabled() && !box("m_pPercent")->isEnabled());
        choose("m_pResize", "By percent");
        QVERIFY(!box("m_pWidth")->isEnabled() && !check("m_pEnlarge")->isEnabled());
        QVERIFY(box("m_pPercent")->isEnabled());
    }

    void whatIsChosenIsTheChange()
    {
        choose("m_pResize", "Fit within");
        type(box("m_pWidth"), "640");
        type(box("m_pHeight"), "2*240");
        QTest::mouseClick(check("m_pEnlarge"), Qt::LeftButton, Qt::NoModifier,
                          QPoint(8, check("m_pEnlarge")->height() / 2));
        choose("m_pRotate", "90° counter-clockwise");
        choose("m_pFormat", "JPG");

        const BatchChange change = m_panel->GetChange();
        QCOMPARE(change.resize, BatchChange::FitWithin);
        QCOMPARE(change.bounds, QSize(640, 480));
        QVERIFY(change.enlarges);
        QCOMPARE(change.rotation, 270);
        QCOMPARE(m_panel->GetRule().suffix, QString("jpg"));
    }

    void eachFormatIsThereOnce()
    {
        const auto* formats = m_panel->findChild<QComboBox*>("m_pFormat");

        QCOMPARE(formats->itemText(1), QString("PNG"));
        QVERIFY(formats->findText("JPG") > 0);
        QCOMPARE(formats->findText("JPEG"), -1);
    }

    void aTypedFolderIsMadeClean_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("folder");
        QTest::newRow("absolute") << "/a/b/"
                                  << "/a/b";
        QTest::newRow("roundabout") << "/a/../b//c"
                                    << "/b/c";
        QTest::newRow("from home") << "pictures" << QDir::homePath() + "/pictures";
        QTest::newRow("the home folder") << "~" << QDir::homePath();
        QTest::newRow("below the home folder") << "~/out" << QDir::homePath() + "/out";
        QTest::newRow("a name with a tilde") << "~out" << QDir::homePath() + "/~out";
        QTest::newRow("blank") << "   "
                               << "";
        QTest::newRow("inner blanks") << "/a b/ c"
                                      << "/a b/ c";
    }
    void aTypedFolderIsMadeClean()
    {
        QFETCH(QString, text);
        QFETCH(QString, folder);
        QSignalSpy changed(m_panel.get(), &BatchJobPanel::FolderChanged);

        m_panel->findChild<QLineEdit*>("m_pFolder")->setText(text);

        QCOMPARE(m_panel->GetRule().folder, folder);
        QCOMPARE(changed.size(), 1);
    }

    void aFolderIsChosen()
    {
        m_panel->SetFolder(m_folder->path());
        const QString wanted = m_folder->path() + "/out";
        QVERIFY(QDir().mkpath(wanted));
        ModalDriver driver(
            [&wanted](QWidget* dialog)
            {
                auto* edit = dialog->findChild<QLineEdit*>("fileNameEdit");
                edit->setText(wanted);
                QTest::keyClick(edit, Qt::Key_Return);
            });

        QTest::mouseClick(m_panel->findChild<QPushButton*>(), Qt::LeftButton);

        QVERIFY(driver.Finished());
        QCOMPARE(m_panel->GetRule().folder, wanted);
    }

    void aCancelledChoiceChangesNothing()
    {
        m_panel->SetFolder(m_folder->path());
        ModalDriver driver([](QWidget* dialog) { ModalDriver::PressKey(dialog, Qt::Key_Escape); });

        QTest::mouseClick(m_panel->findChild<QPushButton*>(), Qt::LeftButton);

        QVERIFY(driver.Finished());
        QCOMPARE(m_panel->GetRule().folder, m_folder->path());
    }

    void valuesAreThereTheNextTime()
    {
        choose("m_pResize", "By percent");
        type(box("m_pPercent"), "25");
        choose("m_pRotate", "180°");
        choose("m_pFormat", "PNG");
        check("m_pKeepFolders")->setChecked(false);
        m_panel->SetFolder("/out");

        m_panel->StoreValues();
        make();

        QCOMPARE(m_panel->GetChange().resize, BatchChange::ByPercent);
        QCOMPARE(m_panel->GetChange().percent, 25);
        QCOMPARE(m_panel->GetChange().rotation, 180);
        QCOMPARE(m_panel->GetRule().suffix, QString("png"));
        QCOMPARE(m_panel->GetRule().folder, QString("/out"));
        QVERIFY(!m_panel->GetRule().keepsFolders);
        QVERIFY(box("m_pPercent")->isEnabled());
    }

    void nonsenseInTheSettingsIsTheDefault()
    {
        for (const char* key : {"resize", "rotation", "format", "width", "percent"})
            m_settings->setValue(QString("batch/%1").arg(key), "-7 nonsense");
        make();

        QCOMPARE(m_panel->GetChange().resize, BatchChange::KeepSize);
        QCOMPARE(m_panel->GetChange().rotation, 0);
        QCOMPARE(m_panel->GetRule().suffix, QString());
        QVERIFY(m_panel->GetChange().bounds.width() >= 1);
    }

private:
    void make()
    {
        m_panel = std::make_unique<BatchJobPanel>(m_settings.get());
        m_panel->resize(500, 500);
        m_panel->show();
        m_panel->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_panel.get()));
    }
    NVSpinBox* box(const QString& name) const { return m_panel->findChild<NVSpinBox*>(name); }
    QCheckBox* check(const QString& name) const { return m_panel->findChild<QCheckBox*>(name); }
    void choose(const QString& name, const QString& text) const
    {
        auto* combo = m_panel->findChild<QComboBox*>(name);
        const int index = combo->findText(text);
        QVERIFY(index >= 0);
        combo->setFocus();
        QTest::keyClick(combo, Qt::Key_Home);
        for (int i = 0; i < index; ++i)
            QTest::keyClick(combo, Qt::Key_Down);
        QCOMPARE(combo->currentText(), text);
    }
    static void type(NVSpinBox* spin, const QString& text)
    {
        spin->setFocus();
        spin->selectAll();
        QTest::keyClicks(spin, text);
        QTest::keyClick(spin, Qt::Key_Return);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<BatchJobPanel> m_panel;
};

NV_TEST_MAIN(tst_BatchJobPanel)
#include "tst_BatchJobPanel.moc"
