// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/sound/Tones.h"

#include <QAudioOutput>
#include <QBuffer>
#include <QCoreApplication>
#include <QSocketNotifier>

#include <algorithm>
#include <array>
#include <cstdio>

#include <unistd.h>

namespace {

constexpr int kMinRate = 8000;

/// Null where there is none. Qt's default is that of a sound server, even where none runs.
QAudioDeviceInfo outputDevice()
{
    const QAudioDeviceInfo usual = QAudioDeviceInfo::defaultOutputDevice();
    return usual.isNull() ? QAudioDeviceInfo::availableDevices(QAudio::AudioOutput).value(0)
                          : usual;
}

/// What the device can play, as near to a common kind of sound as it gets.
QAudioFormat formatOf(const QAudioDeviceInfo& device)
{
    QAudioFormat format;
    format.setSampleRate(44100);
    format.setChannelCount(2);
    format.setSampleSize(16);
    format.setSampleType(QAudioFormat::SignedInt);
    format.setByteOrder(QAudioFormat::LittleEndian);
    format.setCodec("audio/pcm");
    return device.isFormatSupported(format) ? format : device.nearestFormat(format);
}

bool isUsable(const QAudioFormat& format)
{
    return format.sampleSize() == 16 && format.sampleType() == QAudioFormat::SignedInt &&
           format.byteOrder() == QAudioFormat::LittleEndian && format.sampleRate() >= kMinRate &&
           format.channelCount() > 0;
}

/// Plays the tones that standard input asks for, one a line, and answers each with an empty line
/// once the device plays it.
class Player
{
public:
    explicit Player(const QAudioDeviceInfo& device) : m_output(device, formatOf(device))
    {
        QObject::connect(&m_output, &QAudioOutput::stateChanged,
                         [this](QAudio::State state) { follow(state); });
        QObject::connect(&m_lines, &QSocketNotifier::activated, [this] { read(); });
    }

private:
    void read()
    {
        std::array<char, 256> text{};
        const ssize_t count = ::read(STDIN_FILENO, text.data(), text.size());
        if (count <= 0) {
            m_lines.setEnabled(false);
            return m_output.state() == QAudio::ActiveState ? void() : QCoreApplication::quit();
        }
        m_unread.append(text.data(), int(count));
        const int end = m_unread.lastIndexOf('\n');
        if (end >= 0) { // Of several the last: they are the same alarm's.
            play(m_unread.left(end).split('\n').last());
            m_unread.remove(0, end + 1);
        }
    }

    void play(const QByteArray& priority)
    {
        m_output.stop();
        m_tone.close();
        m_tone.setData(norvo::toneOf(priority, m_output.format().sampleRate(),
                                     m_output.format().channelCount()));
        m_tone.open(QIODevice::ReadOnly);
        m_output.start(&m_tone);
    }

    void follow(QAudio::State state)
    {
        if (m_output.error() != QAudio::NoError && m_output.error() != QAudio::UnderrunError) {
            QCoreApplication::exit(1);
        } else if (state == QAudio::ActiveState) {
            std::puts("");
            std::fflush(stdout);
        } else if (!m_lines.isEnabled()) {
            QCoreApplication::quit();
        }
    }

    QAudioOutput m_output;
    QBuffer m_tone;
    QByteArray m_unread;
    QSocketNotifier m_lines{STDIN_FILENO, QSocketNotifier::Read};
};

} // namespace

/// For norvo-panel. Ends with 1 where nothing can be played, and otherwise once its standard input
/// has ended and the last tone is over.
int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    const QAudioDeviceInfo device = outputDevice();
    if (device.isNull() || !isUsable(formatOf(device))) {
        return 1;
    }
    const Player player(device);
    return QCoreApplication::exec();
}
