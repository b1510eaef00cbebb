#include "inspector/TapePlayer.h"

#include <QAudioDevice>
#include <QAudioFormat>
#include <QAudioSink>
#include <QIODevice>
#include <QMediaDevices>
#include <algorithm>

namespace cintal {

namespace {

// The samples of the signal as the sound card asks for them, worked out
// only as it goes: the first ones are ready at once.
class SignalDevice : public QIODevice {
public:
    explicit SignalDevice(SampleStream& stream) : stream(stream) {}
    bool isSequential() const override { return true; }
    bool atEnd() const override { return ended; }
    qint64 bytesAvailable() const override {
        return ended ? 0 : (std::int64_t{1} << 20) + QIODevice::bytesAvailable();
    }

protected:
    qint64 readData(char* data, qint64 maxSize) override {
        const auto n = static_cast<std::size_t>(maxSize / 2);
        buffer.resize(n);
        const std::size_t got = stream.Read(buffer.data(), n);
        if (got < n) ended = true;
        // The sink takes samples in the machine's own order.
        std::copy_n(reinterpret_cast<const char*>(buffer.data()), 2 * got, data);
        return ended && got == 0 ? -1 : static_cast<qint64>(2 * got);
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    SampleStream& stream;
    std::vector<std::int16_t> buffer;
    bool ended = false;
};

} // namespace

TapePlayer::TapePlayer(QObject* parent) : QObject(parent) {
    HasOutput = [] { return !QMediaDevices::defaultAudioOutput().isNull(); };
    timer.setInterval(100);
    connect(&timer, &QTimer::timeout, this, &TapePlayer::Tick);
}

TapePlayer::~TapePlayer() {
    Halt();
}

QString TapePlayer::Clock(std::int64_t ms) {
    const std::int64_t s = std::max<std::int64_t>(ms, 0) / 1000;
    return QString("%1:%2").arg(s / 60).arg(s % 60, 2, 10, QChar('0'));
}

QString TapePlayer::Play(const Blocks& list, std::size_t first) {
    Stop();
    if (!HasOutput || !HasOutput())
        return QStringLiteral("No hay ninguna salida de sonido en este equipo.");
    const QAudioDevice output = QMediaDevices::defaultAudioOutput();
    QAudioFormat format;
    format.setSampleRate(static_cast<int>(rate));
    format.setChannelCount(1);
    format.setSampleFormat(QAudioFormat::Int16);
    if (!output.isFormatSupported(format))
        return QStringLiteral("La salida de sonido no admite sonido mono de 16 bits a 44100 Hz.");
    blocks = list;
    totalMs =
        static_cast<std::int64_t>(SampleStream::Total(blocks, rate, first, true) * 1000 / rate);
    stream = std::make_unique<SampleStream>(blocks, rate, first, true);
    device = std::make_unique<SignalDevice>(*stream);
    device->open(QIODevice::ReadOnly);
    sink = new QAudioSink(output, format, this);
    connect(sink, &QAudioSink::stateChanged, this, [this](QAudio::State state) {
        if (state == QAudio::IdleState || state == QAudio::StoppedState) Stop();
    });
    sink->start(device.get());
    timer.start();
    Tick();
    return {};
}

void TapePlayer::Tick() {
    if (!sink || !stream) return;
    const std::uint64_t played =
        static_cast<std::uint64_t>(sink->processedUSecs()) * rate / 1000000;
    const auto& starts = stream->Starts();
    std::size_t block = starts.empty() ? 0 : starts.front().block;
    for (const SampleStream::Start& s : starts) {
        if (s.sample > played) break;
        block = s.block;
    }
    emit Progress(block, static_cast<std::int64_t>(played * 1000 / rate), totalMs);
}

void TapePlayer::Stop() {
    if (Halt()) emit Finished();
}

bool TapePlayer::Halt() {
    if (!sink) return false;
    timer.stop();
    QAudioSink* s = sink;
    sink = nullptr;
    s->disconnect(this);
    s->stop();
    s->deleteLater();
    device.reset();
    stream.reset();
    return true;
}

} // namespace cintal
