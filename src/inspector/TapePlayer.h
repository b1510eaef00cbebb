#pragma once
// A tape played through the sound card, from a block to the end or to the
// first stop of the tape, with where it stands for the window to show.

#include "tape/Wav.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <functional>
#include <memory>

class QAudioSink;
class QIODevice;

namespace cintal {

class TapePlayer : public QObject {
    Q_OBJECT
public:
    explicit TapePlayer(QObject* parent = nullptr);
    ~TapePlayer() override;

    // Plays a copy of the blocks from first (from 0). Gives the reason in
    // Spanish when nothing plays.
    QString Play(const Blocks& blocks, std::size_t first);
    void Stop();
    bool Playing() const { return sink != nullptr; }

    // Whether the machine has a sound output. Tests put their own answer here.
    std::function<bool()> HasOutput;

    // "m:ss" of a time in milliseconds.
    static QString Clock(std::int64_t ms);

signals:
    // Every tenth of a second while playing: the block sounding (from 0)
    // and the time gone and the whole time, in milliseconds.
    void Progress(std::size_t block, std::int64_t elapsedMs, std::int64_t totalMs);
    // The end, the tape's stop or Stop.
    void Finished();

private:
    void Tick();
    // Stops without a word; false when nothing played.
    bool Halt();

    Blocks blocks;
    std::unique_ptr<SampleStream> stream;
    std::unique_ptr<QIODevice> device;
    QAudioSink* sink = nullptr;
    QTimer timer;
    std::int64_t totalMs = 0;
    std::uint32_t rate = kWavRate;
};

} // namespace cintal
