#pragma once
// "Identificar colección": the DATs loaded, and for the one chosen which of
// its games the collection has (and where) and which it lacks.

#include "widgets/Grid.h"

#include <QDialog>
#include <functional>

class QLabel;
class QProgressBar;
class QPushButton;
class QRadioButton;

namespace cintal {

class FrmIdentifica : public QDialog {
    Q_OBJECT
public:
    explicit FrmIdentifica(QWidget* parent = nullptr);

    // Reads the DATs from the store and lists them; false after a store failure.
    bool Fill();
    void CmdAdd_Click();
    // Not while a DAT is being loaded: the load ends first.
    void reject() override;
    void CmdQuitar_Click();
    void CmdExportar_Click();
    // "Renombrar según la DAT...", for the DAT whose games are listed.
    void CmdRenombrar_Click();
    // The games of the DAT selected, shown as the filter asks.
    void ShowReport();
    void ApplyFilter();

    // Asked for the DAT to load and for where to write the CSV; an empty
    // answer means the user gave up.
    std::function<QString()> ChooseDat;
    std::function<QString(const QString& proposed)> ChooseSaveFile;
    // Shows a window modally; tests put their own here.
    std::function<void(QDialog&)> RunModal = [](QDialog& window) { window.exec(); };

    Grid* GridDats;
    Grid* GridGames;
    QPushButton* CmdAdd;
    QPushButton* CmdQuitar;
    QPushButton* CmdExportar;
    QPushButton* CmdRenombrar;
    QLabel* LabelFase;      // what a long run is doing
    QProgressBar* Progress; // and how far it is
    QRadioButton* OptTodos;
    QRadioButton* OptTengo;
    QRadioButton* OptFalta;
    QLabel* LabelResumen;

private:
    bool SelectDat(qint64 id);
    // Shows a phase of a long run; total 0 for one whose end isn't known.
    void Phase(const QString& text, qint64 done = 0, qint64 total = 0);
    void EndPhases();
    QString shownDat_;  // the name of the DAT whose games are listed
    bool busy_ = false; // a DAT is being loaded
};

} // namespace cintal
