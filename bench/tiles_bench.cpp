#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <png.h>
#include <unistd.h>

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>

#include "gate_table.h"
#include "map/palette_png.h"
#include "map/tile_files.h"
#include "map/tile_renderer.h"
#include "map/track_tiles.h"

// Track tiles of a million points over the band of a 1920 x 1080 view: raster, PNG, files and whole rebuilds.
// The folder of the files is made in TMPDIR; it should lie on a disk's file system.

namespace pallomir {
namespace {

namespace fs = std::filesystem;

constexpr int kUnits = 10;
constexpr PixelSize kView{1920, 1080};
constexpr std::int32_t kCentre = 400'000'000;
constexpr int kUnitsPerPixel = 32;
constexpr int kZoom = 17;

/// Ten drives of equally many points within the band: up to 9 pixels from point to point, with slow turns.
class Drives {
 public:
  explicit Drives(std::size_t points) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> number(-1, 1);
    const double reachX = kView.width + 200;
    const double reachY = kView.height + 200;
    for (auto& track : tracks_) {
      double x = number(random) * reachX, y = number(random) * reachY, heading = 4 * number(random);
      for (std::size_t j = 0; j < points / kUnits; ++j) {
        heading += 0.4 * number(random);
        const double step = 4.5 + 4.5 * number(random);
        const double nextX = x + step * std::cos(heading), nextY = y + step * std::sin(heading);
        if (std::abs(nextX) < reachX && std::abs(nextY) < reachY) {
          x = nextX;
          y = nextY;
        } else {
          heading += 2;
        }
        const auto world = [](double pixels) {
          return kCentre + static_cast<std::int32_t>(pixels * kUnitsPerPixel);
        };
        track.push_back({static_cast<std::uint32_t>(j + 1), world(x), world(y),
                         static_cast<std::uint32_t>(random() & 0xFFFF)});
      }
    }
    drawing_.units.assign(std::begin(tracks_), std::end(tracks_));
    drawing_.CentreX = drawing_.CentreY = kCentre;
    drawing_.UnitsPerPixel = kUnitsPerPixel;
    drawing_.TileZoom = kZoom;
    drawing_.browser = kView;
  }
  Drives(const Drives&) = delete;

  const TrackDrawing& Drawing() const { return drawing_; }

  static const Drives& Of(std::size_t points) {
    static const Drives few(10'000), some(100'000), many(1'000'000);
    return points == 10'000 ? few : points == 100'000 ? some : many;
  }

 private:
  std::vector<DataPoint> tracks_[kUnits];
  TrackDrawing drawing_;
};

const TrackDrawing& DrawingOf(const benchmark::State& state) {
  return Drives::Of(static_cast<std::size_t>(state.range(0))).Drawing();
}

void Raster(benchmark::State& state) {
  const TrackDrawing& drawing = DrawingOf(state);
  for (auto _ : state) benchmark::DoNotOptimize(DrawTracks(drawing));
}
BENCHMARK(Raster)->Arg(10'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

// One line a segment, two a cross, no smoothing, each in its pen; the order of the marks is kept. (Filled
// rectangles for the crosses' bars would halve its time.)
void RasterQPainter(benchmark::State& state) {
  const TrackDrawing& drawing = DrawingOf(state);
  const int reachX = kView.width + 256, reachY = kView.height + 256;
  const auto pixel = [](std::int32_t world) { return (world - kCentre) / kUnitsPerPixel; };
  for (auto _ : state) {
    QImage image(2 * reachX, 2 * reachY, QImage::Format_ARGB32_Premultiplied);
    image.fill(0);
    QPainter painter(&image);
    const QPen line(Qt::black), cross(Qt::red);
    for (const auto points : drawing.units) {
      QPoint previous;
      for (std::size_t j = 0; j < points.size(); ++j) {
        const QPoint at(pixel(points[j].x) + reachX, pixel(points[j].y) + reachY);
        if (j > 0) {
          painter.setPen(line);
          painter.drawLine(at, previous);
        }
        painter.setPen(cross);
        painter.drawLine(at - QPoint(2, 0), at + QPoint(2, 0));
        painter.drawLine(at - QPoint(0, 2), at + QPoint(0, 2));
        previous = at;
      }
    }
    painter.end();
    benchmark::DoNotOptimize(image.constBits());
  }
}
BENCHMARK(RasterQPainter)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

/// A tile out of the drawing's middle.
class MiddleTile {
 public:
  explicit MiddleTile(const benchmark::State& state) : picture_(DrawTracks(DrawingOf(state))) {
    const auto touched = picture_.marks.TouchedTiles();
    pixels_ = picture_.marks.PixelsOf(touched[touched.size() / 2]);
  }
  TilePixels Pixels() const { return pixels_; }

 private:
  TrackPicture picture_;
  TilePixels pixels_;
};

void Png(benchmark::State& state) {
  const MiddleTile tile(state);
  PalettePng png(kTrackPalette);
  for (auto _ : state) benchmark::DoNotOptimize(png.Encode(tile.Pixels()).data());
}
BENCHMARK(Png)->Arg(10'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

void PngLibpng(benchmark::State& state) {
  const MiddleTile tile(state);
  std::vector<std::uint8_t> file;
  for (auto _ : state) {
    file.clear();
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(
        png, &file,
        [](png_structp of, png_bytep bytes, std::size_t size) {
          auto& to = *static_cast<std::vector<std::uint8_t>*>(png_get_io_ptr(of));
          to.insert(to.end(), bytes, bytes + size);
        },
        nullptr);
    png_set_compression_level(png, 1);
    png_set_IHDR(png, info, kTileSize, kTileSize, 4, PNG_COLOR_TYPE_PALETTE, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    const png_color colours[7] = {{0, 0, 0},   {255, 0, 0}, {255, 255, 255}, {0, 0, 0},
                                  {0, 0, 255}, {0, 255, 0}, {255, 0, 255}};
    const png_byte clear = 0;
    png_set_PLTE(png, info, colours, 7);
    png_set_tRNS(png, info, &clear, 1, nullptr);
    png_write_info(png, info);
    png_set_packing(png);
    for (int y = 0; y < kTileSize; ++y) png_write_row(png, tile.Pixels().rows + y * tile.Pixels().stride);
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    benchmark::DoNotOptimize(file.data());
  }
}
BENCHMARK(PngLibpng)->Arg(10'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

void PngQt(benchmark::State& state) {
  const MiddleTile tile(state);
  QImage image(kTileSize, kTileSize, QImage::Format_ARGB32);
  for (int y = 0; y < kTileSize; ++y) {
    for (int x = 0; x < kTileSize; ++x)
      image.setPixel(x, y, kTrackPalette[tile.Pixels().rows[y * tile.Pixels().stride + x]]);
  }
  for (auto _ : state) {
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    image.save(&file, "PNG");
    benchmark::DoNotOptimize(file.data().constData());
  }
}
BENCHMARK(PngQt)->Arg(10'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

// What a tile's picture must at least cost: its marks read, its file written.
void PngFloor(benchmark::State& state) {
  const MiddleTile tile(state);
  std::vector<std::uint8_t> file(33'200);
  for (auto _ : state) {
    std::uint64_t sum = 0;
    for (int y = 0; y < kTileSize; ++y) {
      for (int x = 0; x < kTileSize; x += 8) {
        std::uint64_t eight;
        std::memcpy(&eight, tile.Pixels().rows + y * tile.Pixels().stride + x, sizeof eight);
        sum |= eight;
      }
    }
    benchmark::DoNotOptimize(sum);
    std::memset(file.data(), static_cast<int>(sum & 1), file.size());
    benchmark::DoNotOptimize(file.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(PngFloor)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

class Folder {
 public:
  Folder() {
    std::string name = (fs::temp_directory_path() / "tiles_bench_XXXXXX").string();
    if (!::mkdtemp(name.data())) std::abort();
    path_ = name;
    for (const char* part : {"t", "z"}) fs::create_directory(path_ / part);
  }
  ~Folder() { fs::remove_all(path_); }
  Folder(const Folder&) = delete;
  fs::path Tracks() const { return path_ / "t"; }
  fs::path Zones() const { return path_ / "z"; }

 private:
  fs::path path_;
};

constexpr std::size_t kFiles = 200;

std::vector<std::string> NamesOf(int generation) {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < kFiles; ++i)
    names.push_back(
        TileName(generation, kZoom, {static_cast<std::int32_t>(i % 20), static_cast<std::int32_t>(i / 20)}));
  return names;
}

void FileStep(benchmark::State& state) {
  const Folder folder;
  const Bytes png(33'164, 7);
  int generation = 0;
  for (auto _ : state) {
    const auto names = NamesOf(++generation);
    if (RetireTiles(folder.Tracks(), names)) state.SkipWithError("not retired");
    for (const auto& name : names)
      if (!WriteTile(folder.Tracks(), name, png)) state.SkipWithError("not written");
  }
}
BENCHMARK(FileStep)->Unit(benchmark::kMillisecond)->UseRealTime();

void FileStepDeleteAndCreate(benchmark::State& state) {
  const Folder folder;
  const Bytes png(33'164, 7);
  int generation = 0;
  for (auto _ : state) {
    const auto names = NamesOf(++generation);
    if (DeleteFiles(folder.Tracks())) state.SkipWithError("not deleted");
    for (const auto& name : names) {
      const int file =
          ::open((folder.Tracks() / (name + ".png")).c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
      if (::write(file, png.data(), png.size()) != static_cast<ssize_t>(png.size()))
        state.SkipWithError("not written");
      ::close(file);
    }
  }
}
BENCHMARK(FileStepDeleteAndCreate)->Unit(benchmark::kMillisecond)->UseRealTime();

void WholeRebuilds(benchmark::internal::Benchmark* bench) {
  for (const int points : {10'000, 100'000, 1'000'000}) bench->Arg(points);
  bench->Unit(benchmark::kMillisecond)->UseRealTime();
}

void RebuildInMemory(benchmark::State& state) {
  const TrackDrawing& drawing = DrawingOf(state);
  PalettePng png(kTrackPalette);
  for (auto _ : state) {
    const TrackPicture picture = DrawTracks(drawing);
    for (const TilePlace tile : picture.marks.TouchedTiles())
      benchmark::DoNotOptimize(png.Encode(picture.marks.PixelsOf(tile)).data());
  }
}
BENCHMARK(RebuildInMemory)->Apply(WholeRebuilds);

void RebuildWithFiles(benchmark::State& state) {
  const TrackDrawing& drawing = DrawingOf(state);
  const Folder folder;
  Trace trace([] { return 0.0; }, [](const std::string&) {});
  TrackTiles tiles({folder.Tracks(), folder.Zones(), {}}, trace);
  for (auto _ : state) {
    tiles.Begin(drawing);
    std::optional<RebuildEnd> end;
    while (!end) end = tiles.Continue();
    if (end->error) state.SkipWithError("not rebuilt");
  }
}
BENCHMARK(RebuildWithFiles)->Apply(WholeRebuilds);

// Where the gate is below 1 the yardstick is a floor.
const bench::GateRow kRows[] = {
    bench::GateRow(
        {"raster of 1M points against QPainter", "Raster/1000000", "RasterQPainter/1000000", 25, 50}),
    bench::GateRow({"PNG of a dense tile against libpng", "Png/1000000", "PngLibpng/1000000", 20, 32}),
    bench::GateRow({"PNG of a sparse tile against libpng", "Png/10000", "PngLibpng/10000", 20, 32}),
    bench::GateRow({"PNG of a dense tile against Qt", "Png/1000000", "PngQt/1000000", 250, 500}),
    bench::GateRow({"PNG of a sparse tile against Qt", "Png/10000", "PngQt/10000", 250, 500}),
    bench::GateRow({"200 files against delete and create", "FileStep/real_time",
                    "FileStepDeleteAndCreate/real_time", 2, 3}),
    bench::GateRow({"1M rebuild with files against in memory", "RebuildWithFiles/1000000/real_time",
                    "RebuildInMemory/1000000/real_time", 1 / 1.8, 1 / 1.4}),
};

}  // namespace
}  // namespace pallomir
