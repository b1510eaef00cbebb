#pragma once
// The sound of the open tape in the inspector: "Exportar WAV..." and
// "Reproducir"/"Parar", with the time played and the block sounding shown
// in the list.

#include "inspector/Inspector.h"
#include "inspector/TapePlayer.h"

#include <QLabel>
#include <QPushButton>
#include <functional>

namespace cintal {

class Grid;

class TapeSound : public QObject {
    Q_OBJECT
public:
    // selected gives the block (from 1) chosen in the list, 0 for none.
    TapeSound(QWidget* window, Inspector& logic, Grid& list, std::function<int()> selected);

    void CommandWav_Click();
    void CommandPlay_Click();
    // Stops the sound and puts the list back as it was.
    void Stop();

    // The save dialog, given the proposed path. Tests put their own here.
    std::function<QString(const QString& proposed)> ChooseSaveFile;

    QPushButton* CommandWav;
    QPushButton* CommandPlay;
    QLabel* LabelTime;
    TapePlayer Player;

private:
    void Played(std::size_t block, std::int64_t elapsedMs, std::int64_t totalMs);
    void Ended();
    void Mark(int row, bool on);

    QWidget* window;
    Inspector& logic;
    Grid& list;
    std::function<int()> selected;
    int marked = 0; // the row shown as sounding
};

} // namespace cintal
