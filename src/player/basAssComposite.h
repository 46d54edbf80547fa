#pragma once

class QImage;
struct ass_image;

namespace basAssComposite {

// Lays a chain of the subtitle renderer's images over a video frame: each image is an
// 8-bit coverage bitmap with one colour (RGBA, the low byte being transparency), placed
// at its offset and clipped to the frame. Frames of 32-bit formats are blended in
// place, premultiplied or straight alpha as the format says; any other format is blended
// through a 32-bit copy and converted back.
void Composite(QImage &frame, const ass_image *images);

} // namespace basAssComposite
