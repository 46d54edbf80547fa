#include "timing/CPlayerSubtitles.h"

#include "core/basMessage.h"
#include "core/basSetting.h"
#include "formats/CTiming.h"
#include "formats/CTimings.h"
#include "timing/CTimingGrid.h"

namespace {

const QString kSection = QStringLiteral("Player");
const QString kShowSubtitles = QStringLiteral("ShowSubtitles");
// How often the links and the script's head are looked at while the subtitles are on.
constexpr int kPollMilliseconds = 200;

CTimingGrid *GridOf(const CTiming *document)
{
    return document ? dynamic_cast<CTimingGrid *>(document->TimingTable) : nullptr;
}

} // namespace

CPlayerSubtitles::CPlayerSubtitles(QObject *parent)
    : QObject(parent)
{
    m_poll.setInterval(kPollMilliseconds);
    connect(&m_poll, &QTimer::timeout, this, &CPlayerSubtitles::Poll);
    connect(&m_overlay, &CAssOverlay::TrackChanged, this, &CPlayerSubtitles::Changed);
}

CPlayerSubtitles::~CPlayerSubtitles()
{
    disconnect(&m_overlay, nullptr, this, nullptr);
}

void CPlayerSubtitles::setPlayer(const IPlayerWindow *window)
{
    m_player = window;
    Follow();
}

bool CPlayerSubtitles::SavedEnabled()
{
    return GetSetting(kSection, kShowSubtitles, QStringLiteral("0")) == QLatin1String("1");
}

void CPlayerSubtitles::SaveEnabled(bool on)
{
    SaveSetting(kSection, kShowSubtitles, on ? QStringLiteral("1") : QStringLiteral("0"));
}

void CPlayerSubtitles::setEnabled(bool on)
{
    if (on == m_enabled)
        return;
    m_enabled = on;
    if (on)
        m_poll.start();
    else
        m_poll.stop();
    if (!Follow())
        Changed();
}

CTiming *CPlayerSubtitles::DocumentOfKey(const QString &key) const
{
    CTimings *list = Documents ? Documents() : nullptr;
    return list && !key.isEmpty() ? list->Item(key) : nullptr;
}

CTiming *CPlayerSubtitles::Document() const
{
    return DocumentOfKey(m_documentKey);
}

CTiming *CPlayerSubtitles::FindLinked() const
{
    CTimings *list = Documents ? Documents() : nullptr;
    if (!list || !m_player)
        return nullptr;
    const auto linked = [this](const CTiming *document) {
        return document && document->PlayerWindow() == m_player && GridOf(document);
    };
    if (list->ActiveWindow)
        if (const QObject *active = list->ActiveWindow())
            for (CTiming *document : *list)
                if (document->TimingWindow == active && linked(document))
                    return document;
    if (CTiming *current = DocumentOfKey(m_documentKey); linked(current))
        return current;
    for (CTiming *document : *list)
        if (linked(document))
            return document;
    return nullptr;
}

bool CPlayerSubtitles::Follow()
{
    CTiming *document = m_enabled ? FindLinked() : nullptr;
    CTimingGrid *grid = GridOf(document);
    const QString key = document ? QString::number(document->SerialNo()) : QString();
    if (key == m_documentKey && grid == m_overlay.Grid())
        return false;
    m_documentKey = key;
    m_overlay.Attach(grid);
    Changed();
    return true;
}

void CPlayerSubtitles::Poll()
{
    Follow();
    // A changed style or script information reaches the track here: the grid tells only
    // of its own cells.
    m_overlay.Flush();
    UpdateStatus();
}

void CPlayerSubtitles::Changed()
{
    ++m_generation;
    m_picture = QImage();
    UpdateStatus();
    emit PictureChanged();
}

QImage CPlayerSubtitles::Compose(const QImage &frame, double seconds)
{
    if (!m_enabled || frame.isNull())
        return frame;
    Follow();
    if (!m_overlay.Grid() || !m_overlay.Renderer().IsAvailable())
        return frame;
    // Rows told of and not yet brought in are brought in by the render below.
    if (m_overlay.Pending())
        ++m_generation;
    if (!m_picture.isNull() && m_pictureFrame == frame.cacheKey() && m_pictureSeconds == seconds
        && m_pictureGeneration == m_generation)
        return m_picture;
    QImage picture = frame;
    m_overlay.Render(picture, seconds);
    m_picture = picture;
    m_pictureFrame = frame.cacheKey();
    m_pictureSeconds = seconds;
    m_pictureGeneration = m_generation;
    UpdateStatus();
    return picture;
}

void CPlayerSubtitles::UpdateStatus()
{
    const QString status = Status();
    if (status == m_status)
        return;
    m_status = status;
    emit StatusChanged(m_status);
}

QString CPlayerSubtitles::Status() const
{
    if (!m_enabled)
        return {};
    if (!m_overlay.Renderer().IsAvailable())
        return m_overlay.Renderer().Status();
    if (!m_overlay.Grid())
        return Msg(QStringLiteral("VELMAR_OVERLAY_110"));
    return m_overlay.Status();
}

// The meta-object code stays in this object file, as the overlay's does, so that programs
// linking the core without the player's subtitles load no libass.
#include "moc_CPlayerSubtitles.cpp"
