#pragma once

#include <QImage>
#include <QString>

#include <functional>

class CMediaControlEvents;

// Open states a control reports. Only MediaOpen carries meaning for the program.
namespace MediaOpenState {
constexpr int Undefined = 0;
constexpr int MediaChanging = 8;
constexpr int MediaOpening = 12;
constexpr int MediaOpen = 13;
} // namespace MediaOpenState

// Play states a control reports; 0 when there is no media.
namespace MediaPlayState {
constexpr int Undefined = 0;
constexpr int Stopped = 1;
constexpr int Paused = 2;
constexpr int Playing = 3;
} // namespace MediaPlayState

// The video control that a player window holds. Positions and durations are seconds as
// doubles, the rate is a factor, the volume runs from 0 to 100 and picture sizes are
// pixels. Any operation may throw; the player document reports such faults itself.
class IMediaControl
{
public:
    virtual ~IMediaControl() = default;

    // Writing opens a file. Reading gives it back; it reads empty after a write when the
    // file could not be taken, and writing "" closes the media.
    virtual QString URL() const = 0;
    virtual void setURL(const QString &url) = 0;

    virtual int openState() const = 0;
    virtual int playState() const = 0;

    virtual void play() = 0;
    virtual void pause() = 0;
    // Stops and goes back to the beginning.
    virtual void stop() = 0;

    virtual double currentPosition() const = 0;
    virtual void setCurrentPosition(double seconds) = 0;

    // "Play", "Pause", "Stop": whether the command can be given now; "Rate": whether the
    // rate can be set now. Any other name is false.
    virtual bool isAvailable(const QString &name) const = 0;

    virtual double rate() const = 0;
    virtual void setRate(double factor) = 0;
    virtual int volume() const = 0;
    virtual void setVolume(int volume) = 0;
    // Whether a newly written URL starts playing by itself (true for a new control).
    virtual void setAutoStart(bool autoStart) = 0;
    // "showFrame": a stopped video shows its frame instead of a blank picture.
    virtual void setMode(const QString &mode, bool on) = 0;

    // Of the current media; 0 while not known.
    virtual double duration() const = 0;
    virtual int imageSourceWidth() const = 0;
    virtual int imageSourceHeight() const = 0;

    // "full" with the control's own progress bar, "none" without.
    virtual QString uiMode() const = 0;
    virtual void setUiMode(const QString &mode) = 0;

    // OpenStateChange and Click are emitted here.
    virtual CMediaControlEvents *Events() = 0;

    // Turns a frame (an image at the video's size) and its time in seconds into the
    // picture that is shown. Without a filter the frame is shown as it is.
    using PictureFilter = std::function<QImage(const QImage &frame, double seconds)>;
    virtual void setPictureFilter(PictureFilter filter) = 0;
    // The frame on show is to go through the filter and be drawn again.
    virtual void RefreshPicture() = 0;
};
