// The program speaks Spanish on a machine set to English: Qt's own dialogs,
// the reasons the system gives, and the numbers.

#include "platform/Spanish.h"
#include "catalogue/Store.h"
#include "platform/ErrorText.h"
#include "platform/MoveFile.h"
#include "widgets/DesktopShell.h"
#include "widgets/Grids.h"

#include <QAbstractButton>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <cerrno>
#include <gtest/gtest.h>

namespace cintal::test {
namespace {

std::string S(const QString& s) {
    return s.toStdString();
}

class SpanishTest : public ::testing::Test {
protected:
    void SetUp() override {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        UseSpanish();
    }
    void TearDown() override { QLocale::setDefault(QLocale::c()); }
};

TEST_F(SpanishTest, QtDialogsSpeakSpanish) {
    ASSERT_TRUE(LoadQtSpanish());
    // The dialog Qt draws itself, as on a bare X server.
    QFileDialog dialog(nullptr, QStringLiteral("Abrir"), QString(),
                       QStringLiteral("Cintas (*.tzx);;All Files (*)"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFileMode(QFileDialog::ExistingFile);
    std::vector<std::string> labels;
    for (const QLabel* l : dialog.findChildren<QLabel*>())
        if (!l->text().isEmpty()) labels.push_back(S(l->text()));
    EXPECT_EQ(labels,
              (std::vector<std::string>{"Ver en:", "&Nombre de fichero:", "Ficheros de tipo:"}));
    std::vector<std::string> buttons;
    for (const QPushButton* b : dialog.findChildren<QPushButton*>())
        buttons.push_back(S(b->text()));
    EXPECT_EQ(buttons, (std::vector<std::string>{"&Abrir", "Cancelar"}));

    QMessageBox box;
    box.setDetailedText(QStringLiteral("a.tzx"));
    std::vector<std::string> boxButtons;
    for (const QAbstractButton* b : box.buttons())
        boxButtons.push_back(S(b->text()));
    EXPECT_EQ(boxButtons, (std::vector<std::string>{"Mostrar los detalles..."}));
}

TEST_F(SpanishTest, SystemReasonsAreSpanish) {
    EXPECT_EQ(S(ErrorText(ENOSPC)), "no queda espacio en el disco");
    EXPECT_EQ(S(ErrorText(std::make_error_code(std::errc::broken_pipe))), "la tubería está rota");
    EXPECT_EQ(S(ErrorText(EDOM)), "error del sistema número " + std::to_string(EDOM));

    QTemporaryDir dir;
    QFile missing(dir.filePath("no-existe.tzx"));
    EXPECT_FALSE(missing.open(QIODevice::ReadOnly));
    EXPECT_EQ(S(ErrorText(missing)), "no existe");

    QFile(dir.filePath("a.tzx")).open(QIODevice::WriteOnly);
    QFile(dir.filePath("b.tzx")).open(QIODevice::WriteOnly);
    QString reason;
    EXPECT_FALSE(platform::MoveNoReplace(dir.filePath("a.tzx"), dir.filePath("b.tzx"), &reason));
    EXPECT_EQ(S(reason), "ya existe");

    // A catalogue whose first page is damaged.
    const QString db = dir.filePath("cintal.mdb");
    ASSERT_TRUE(Store::CreateEmpty(db, &reason)) << S(reason);
    Store::Close();
    QFile damaged(db);
    ASSERT_TRUE(damaged.open(QIODevice::ReadWrite));
    damaged.seek(100);
    damaged.write(QByteArray(3000, '\xFF'));
    damaged.close();
    EXPECT_FALSE(Store::Open(db, &reason));
    EXPECT_EQ(S(reason), "el archivo del catálogo está dañado");

    DesktopShell shell;
    EXPECT_FALSE(shell.Start(dir.filePath("emulador"), {dir.filePath("a.tzx")}, &reason));
    EXPECT_EQ(S(reason), "no existe");
}

TEST_F(SpanishTest, NumbersAreGroupedAsSpanishDoes) {
    EXPECT_EQ(S(QLocale().toString(7208.5, 'f', 1)), "7208,5");
    EXPECT_EQ(S(Number(7208)), "7208");
    EXPECT_EQ(S(Number(-12345)), "-12.345");
    EXPECT_EQ(S(Number(1234567)), "1.234.567");
    EXPECT_EQ(S(Grids::TitlesCaption(12345, 1234567)),
              "Cintal 1.0.404 beta  - 12.345 programas hallados / 1.234.567 mostrados.");
}

} // namespace
} // namespace cintal::test
