// tessuma-rawpicture: turns a picture into the game's ready-to-draw form.
//
//   tessuma-rawpicture in.png out.px
//
// The game's first frame draws about twenty pictures: the background, the
// button faces, the cursor. Decoding them from PNG takes several
// milliseconds at start-up; the .px form is the decoded pixels themselves,
// stored uncompressed among the program's resources, which the game draws
// where they lie (qt/view/Look.cpp reads it).
//
// Layout, all numbers 32-bit in the byte order of the machine that built it:
//   "TSPX", 0x01020304 (byte-order mark), width, height, pixel format, then
//   height rows of width pixels, no padding. The format is Qt's number for
//   it: 4 for an opaque picture (0xffRRGGBB), 6 for one with transparency
//   (premultiplied 0xAARRGGBB). A reader on a machine of the other byte
//   order sees the mark reversed and falls back to the PNG.
#include <QImage>
#include <QImageReader>
#include <QSaveFile>

#include <cstdint>
#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: tessuma-rawpicture in.png out.px\n");
        return 2;
    }
    QImageReader reader(QString::fromLocal8Bit(argv[1]));
    QImage image = reader.read();
    if (image.isNull()) {
        std::fprintf(stderr, "tessuma-rawpicture: %s: %s\n", argv[1], qPrintable(reader.errorString()));
        return 1;
    }
    image = image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                          : QImage::Format_RGB32);
    const std::uint32_t header[4] = {0x01020304u, static_cast<std::uint32_t>(image.width()),
                                     static_cast<std::uint32_t>(image.height()),
                                     static_cast<std::uint32_t>(image.format())};
    QByteArray out("TSPX");
    out.append(reinterpret_cast<const char*>(header), sizeof header);
    for (int y = 0; y < image.height(); ++y)
        out.append(reinterpret_cast<const char*>(image.constScanLine(y)), image.width() * 4);
    QSaveFile file(QString::fromLocal8Bit(argv[2]));
    if (!file.open(QIODevice::WriteOnly) || file.write(out) != out.size() || !file.commit()) {
        std::fprintf(stderr, "tessuma-rawpicture: %s: %s\n", argv[2], qPrintable(file.errorString()));
        return 1;
    }
    return 0;
}
