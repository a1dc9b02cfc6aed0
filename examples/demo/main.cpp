// The demo application: takes the bundled photos down the library's whole road as a user would,
// on a stepped clock, and writes a picture of each screen state. First, its main job: an editing
// session on a 12-megapixel photo (vignette, HDR, undo, redo, auto adjust, sharpness, then the
// full-size photo saved), with a line of timing and file size for each step. The photo tool runs
// three times: with a picture in memory (saved to a temporary JPEG), with a file (saved to the
// album) and with an album photo that lies "in the cloud" (downloaded over HTTP from a server the
// demo runs on the loopback, then saved to a temporary JPEG). Then the sticker tool: two stickers
// are laid on the cat, dragged, pinched and turned by hand, and composed on the full-size photo
// with a water mark. Last the filters: a contact sheet of the whole filter set on the astronaut,
// and a filter screen whose strength slider is dragged by hand, and the frames of an animated GIF.
//
//     orv-demo [--out <folder>]

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "examples/orvdemo/CropOrientationTour.h"
#include "examples/orvdemo/DemoWait.h"
#include "examples/orvdemo/EditingTour.h"
#include "examples/orvdemo/FilterContactSheet.h"
#include "examples/orvdemo/FilterDemoController.h"
#include "examples/orvdemo/GifFrameSheet.h"
#include "examples/orvdemo/LoopbackHttpServer.h"
#include "examples/orvdemo/PhotoDemoComponent.h"
#include "examples/orvdemo/PhotoDemoOptions.h"
#include "examples/orvdemo/StickerDemoController.h"
#include "examples/orvdemo/StickerDemoOptions.h"
#include "examples/orvdemo/TurnCutToolController.h"
#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvKit.h"
#include "frameworks/core/OrvResult.h"
#include "frameworks/core/OrvStickerLocalPackage.h"
#include "frameworks/core/OrvTSAssetsManager.h"
#include "frameworks/core/OrvTSFileManager.h"
#include "frameworks/core/OrvWaterMarkOption.h"
#include "frameworks/strand/kernels/LookCatalogue.h"
#include "orvviews/popup/OrvPopupProgress.h"
#include "orvviews/views/OrvViewController.h"
#include "orvviews/views/OrvViewControllerExtension.h"
#include "platform/rt/Bundle.h"
#include "platform/rt/Error.h"
#include "platform/rt/Memory.h"
#include "platform/rt/RunLoop.h"
#include "platform/ui/Button.h"
#include "platform/ui/EventInjector.h"
#include "platform/ui/Label.h"
#include "platform/ui/Renderer.h"
#include "platform/ui/Screen.h"
#include "platform/ui/Window.h"

namespace fs = std::filesystem;

namespace {

// The application's own first screen, from which the flows start.
class HomeController : public OrvViewController {
  public:
    void viewDidLoad() override {
        OrvViewController::viewDidLoad();
        view()->setBackgroundColor(gfx::Color::rgb(0.95, 0.95, 0.97));
        auto label = ui::makeView<ui::Label>({20, 280, view()->bounds().size.width - 40, 60});
        label->setText("相册 · Home");
        label->setFont(gfx::Font::boldSystemFont(24));
        label->setTextColor(gfx::Color::rgb(0.2, 0.2, 0.25));
        label->setTextAlignment(gfx::TextAlignment::Center);
        view()->addSubview(label);
    }
};

// Where the photo tool's input comes from and where its result goes.
struct Run {
    std::string name;
    std::function<void(orvdemo::PhotoDemoComponent&)> giveInput;
    bool saveToTemp = false;
    bool saveToAlbum = false;
};

class Session {
  public:
    explicit Session(fs::path out) : out_(std::move(out)) {}

    int run() {
        fs::create_directories(out_);
        loop().setClock(std::make_shared<rt::ManualClock>());
        ui::Screen::main().setBounds({0, 0, 375, 667});
        ui::Screen::main().setScale(2);
        OrvTSAssetsManager::setAlbumRoot((out_ / "album").string());

        window_ = ui::makeView<ui::Window>(ui::Screen::main().bounds());
        home_ = orv::rt::make<HomeController>();
        window_->setRootViewController(home_);
        window_->makeKeyAndVisible();
        loop().runFor(0.1);
        std::printf("OrvViews demo: screens written to %s\n", out_.c_str());
        shoot("home");

        const auto photos = orv::rt::Bundle::main().resourcePath() + "/photos/";
        std::printf("photo editor, on dragonfly.jpg:\n");
        orvdemo::EditingTour tour(window_, home_.get(),
                                  [this](const std::string& name) { shoot(name); });
        if (!tour.run(photos + "dragonfly.jpg", (out_ / "edited-dragonfly.jpg").string())) return 1;
        if (int failed = cropEveryOrientation(photos + "dragonfly.jpg")) return failed;
        if (int failed = turnAndCut(photos + "dragonfly.jpg")) return failed;

        if (!server_.start()) return fail("the loopback server did not start");
        auto cup = imageWithContentsOfFile(photos + "coffee.png");
        if (!cup) return fail("the bundled photos are missing");
        server_.addFile("/cloud/coffee.jpg", orvJpegDataWithCompress(cup, 0.9), "image/jpeg",
                        {.chunkSize = 8 * 1024,
                         .delay = std::chrono::milliseconds(25),
                         .failAfter = std::nullopt});

        const Run runs[] = {
            {"memory",
             [&](auto& c) { c.setInputImage(imageWithContentsOfFile(photos + "astronaut.png")); },
             true, false},
            {"file", [&](auto& c) { c.setInputTempFilePath(photos + "rocket.jpg"); }, false, true},
            {"cloud",
             [&](auto& c) {
                 c.setInputAsset(OrvTSAssetsManager::addCloudAsset(server_.url("/cloud/coffee.jpg"),
                                                                   std::string("Cloud")));
             },
             true, false},
        };
        for (const Run& run : runs) {
            if (int failed = runPhotoTool(run)) return failed;
        }
        server_.stop();
        if (int failed = runStickerTool(photos + "chelsea.png")) return failed;
        const auto astronaut = imageWithContentsOfFile(photos + "astronaut.png");
        if (int failed = writeContactSheet(astronaut)) return failed;
        if (int failed = runFilterScreen(astronaut)) return failed;
        if (int failed = writeGifFrames(orv::rt::Bundle::main().resourcePath() +
                                        "/gifs/newtonscradle.gif")) {
            return failed;
        }
        return failed_ ? 1 : 0;
    }

  private:
    int runPhotoTool(const Run& run) {
        std::printf("photo tool, input %s:\n", run.name.c_str());
        std::shared_ptr<OrvResult> delivered;
        std::shared_ptr<rt::Error> failure;
        bool called = false;
        auto options = OrvOptions::build<orvdemo::PhotoDemoOptions>();
        options->setSaveToTemp(run.saveToTemp);
        options->setSaveToAlbum(run.saveToAlbum);
        auto component = OrvEditComponent::initWithSourceController<orvdemo::PhotoDemoComponent>(
            home_.get(),
            [&](const std::shared_ptr<OrvResult>& result, const std::shared_ptr<rt::Error>& error,
                const std::shared_ptr<ui::ViewController>&) {
                called = true;
                delivered = result;
                failure = error;
            });
        component->setOptions(options);
        component->setAutoDismissWhenCompelted(true);
        run.giveInput(*component);
        component->showComponent();
        loop().runFor(0.5);

        auto screen = component->controller();
        if (!screen) return fail("the photo tool did not appear");
        if (run.name == "cloud") shootDownload();
        if (!loop().runUntil([&] { return screen->shownImage() != nullptr; })) {
            return fail("the input never reached the screen");
        }
        loop().runFor(0.5);
        shoot(run.name + "-tool");
        if (run.name == "memory") tourHub(*screen);

        tap(*screen->doneButton());
        if (!loop().runUntil([&] { return called; })) return fail("the result never came back");
        loop().runFor(2.5);
        shoot(run.name + "-back-home");
        return report(run, delivered, failure);
    }

    // Two stickers on the cat, placed by hand, then composed at full size with a water mark.
    int runStickerTool(const std::string& photo) {
        std::printf("sticker tool:\n");
        std::shared_ptr<OrvResult> delivered;
        bool called = false;
        auto options = OrvOptions::build<orvdemo::StickerDemoOptions>();
        options->setSaveToTemp(true);
        auto component = OrvEditComponent::initWithSourceController<orvdemo::PhotoDemoComponent>(
            home_.get(),
            [&](const std::shared_ptr<OrvResult>& result, const std::shared_ptr<rt::Error>&,
                const std::shared_ptr<ui::ViewController>&) {
                called = true;
                delivered = result;
            });
        component->setOptions(options);
        component->setAutoDismissWhenCompelted(true);
        component->setInputTempFilePath(photo);
        component->showComponent();
        loop().runFor(0.5);
        auto screen =
            std::dynamic_pointer_cast<orvdemo::StickerDemoController>(component->controller());
        if (!screen || !loop().runUntil([&] { return screen->stickerLayer() != nullptr; })) {
            return fail("the sticker tool did not show the photo");
        }
        screen->setWaterMarkOption(waterMark());
        loop().runFor(0.5);

        const auto package = OrvStickerLocalPackage::package();
        auto glasses = package->stickerWithIdt(10104);
        auto bubble = package->stickerWithIdt(10201);
        if (!glasses || !bubble) return fail("the sticker package is missing");
        package->loadStickerData(glasses);
        package->loadStickerData(bubble);

        // The sunglasses go up onto the cat's face, grow and tilt by the handle.
        auto injector = ui::EventInjector::injectorForWindow(window_);
        auto first = screen->addSticker(glasses);
        const gfx::Point start = centreOnScreen(*first);
        const gfx::Point face{start.x - 20, start.y - 70};
        injector->drag({start, face}, 0.5);
        const gfx::Point handle = handleOnScreen(*first);
        injector->drag(arc(face, handle, 25, 1.35), 0.6);

        // The bubble goes to the lower left and grows by a pinch.
        auto second = screen->addSticker(bubble);
        const gfx::Point bubbleStart = centreOnScreen(*second);
        const gfx::Point corner{bubbleStart.x - 70, bubbleStart.y + 60};
        injector->drag({bubbleStart, corner}, 0.5);
        injector->pinch(corner, 60, 90, 0.4);
        injector->tap(centreOnScreen(*first));
        loop().runFor(0.3);
        shoot("stickers-placed");

        tap(*screen->doneButton());
        if (!loop().runUntil([&] { return called; })) return fail("the stickers never came back");
        loop().runFor(2.5);
        return report({"stickers", {}, true, false}, delivered, nullptr);
    }

    int writeContactSheet(const gfx::ImagePtr& photo) {
        const fs::path path = out_ / "filters-contact-sheet.png";
        const int tiles = orvdemo::FilterContactSheet::write(photo, path.string());
        if (tiles == 0) return fail("the contact sheet could not be written");
        std::printf("filters: %d tiles in %s\n", tiles, path.c_str());
        return 0;
    }

    // A black-and-white look on the screen; the panel is unfolded and the look's strength
    // slider dragged down to a tenth, which brings most of the colour back.
    int runFilterScreen(const gfx::ImagePtr& photo) {
        auto screen = orv::rt::make<orvdemo::FilterDemoController>();
        screen->setPhoto(photo);
        screen->setFilterCode("BW01");
        orvPresentModalNavigationController(*home_, screen, true, true);
        loop().runFor(0.8);
        const auto params = screen->params();
        const auto& bars = screen->configView()->seekBars();
        const auto keys = params ? params->argKeys() : std::vector<std::string>{};
        const auto strength = std::find(keys.begin(), keys.end(), "strength");
        if (strength == keys.end() || bars.size() != keys.size()) {
            return fail("the filter screen has no strength slider");
        }
        tap(*screen->configView()->stateButton());
        loop().runFor(0.5);
        shoot("filter-before");

        const auto arg = params->args()[strength - keys.begin()];
        const auto& bar = bars[strength - keys.begin()]->seekBar();
        const gfx::Rect frame = bar->convertRectToView(bar->bounds(), nullptr);
        const double y = gfx::rectGetMidY(frame), before = arg->value();
        auto injector = ui::EventInjector::injectorForWindow(window_);
        injector->drag({{frame.origin.x + frame.size.width * arg->precent() - 1, y},
                        {frame.origin.x + frame.size.width * 0.1, y}},
                       0.6);
        loop().runFor(0.3);
        shoot("filter-after");
        std::printf("  look %s: %s moved from %.2f to %.2f\n", params->code().c_str(),
                    arg->key().c_str(), before, arg->value());
        return 0;
    }

    // The photo under each EXIF orientation, cropped: each must come out upright and framed as
    // the window showed it.
    int cropEveryOrientation(const std::string& photo) {
        std::printf("crop tool, the photo under every EXIF orientation:\n");
        auto tour = orv::rt::make<orvdemo::CropOrientationTour>();
        tour->setWindow(window_);
        tour->setShoot([this](const std::string& name) { shoot(name); });
        const fs::path sheet = out_ / "crop-orientations.png";
        if (!tour->run(photo, sheet.string())) return fail("a crop of a tagged photo went wrong");
        std::printf("  %s\n", sheet.c_str());
        return 0;
    }

    // The combined tool: a look previewed, a quarter turn, and a square of 1080 pixels saved.
    int turnAndCut(const std::string& photo) {
        std::printf("turn-and-crop tool, a 1080 x 1080 square with a look:\n");
        std::shared_ptr<OrvResult> result;
        auto tool = orv::rt::make<orvdemo::TurnCutToolController>();
        tool->setInputTempFilePath(photo);
        tool->setSaveToTemp(true);
        tool->setCutSize({1080, 1080});
        tool->setOnResult([&](const std::shared_ptr<OrvResult>& r) { result = r; });
        window_->setRootViewController(tool);
        const auto& touch = tool->touchView();
        if (!orvdemo::waitFor([&] { return touch->imageView()->image() != nullptr; })) {
            return fail("the turn-and-crop tool never showed the photo");
        }
        loop().runFor(0.5);
        shoot("turn-cut-open");
        const auto plain = touch->imageView()->image();
        tap(*tool->lookButton("FM02"));
        if (!orvdemo::waitFor([&] {
                return touch->imageView()->image() != plain &&
                       OrvPopupProgress::sharedView()->superview() == nullptr;
            })) {
            return fail("the look never came");
        }
        loop().runFor(0.5);
        shoot("turn-cut-look");
        tap(*tool->turnButton());
        loop().runFor(0.6);
        if (touch->imageOrientation() != gfx::ImageOrientation::Right) {
            return fail("the turn-and-crop tool did not turn");
        }
        shoot("turn-cut-turned");
        tap(*tool->doneButton());
        if (!orvdemo::waitFor([&] { return result != nullptr; }) || !result->imagePath()) {
            return fail("the turn-and-crop tool saved nothing");
        }
        const fs::path saved = out_ / "turn-cut.jpg";
        fs::copy_file(*result->imagePath(), saved, fs::copy_options::overwrite_existing);
        OrvTSFileManager::deletePath(result->imagePath());
        auto image = imageWithContentsOfFile(saved.string());
        std::printf("  saved %s (%dx%d)\n", saved.c_str(), image ? image->bitmap()->width() : 0,
                    image ? image->bitmap()->height() : 0);
        window_->setRootViewController(home_);
        loop().runFor(0.3);
        return 0;
    }

    // The animated picture's frames laid out with their durations.
    int writeGifFrames(const std::string& file) {
        auto gif = OrvGifImage::imageWithContentsOfFile(file);
        if (!gif || gif->frameCount() == 0) return fail("the animated picture did not decode");
        const fs::path path = out_ / "gif-frames.png";
        if (!orvdemo::GifFrameSheet::write(*gif, path.string())) {
            return fail("the frame sheet could not be written");
        }
        std::printf(
            "animated picture %s: %llu frames, loop count %llu, %.2f s in all\n  %s\n",
            fs::path(file).filename().c_str(), static_cast<unsigned long long>(gif->frameCount()),
            static_cast<unsigned long long>(gif->loopCount()), gif->duration(), path.c_str());
        return 0;
    }

    static std::shared_ptr<OrvWaterMarkOption> waterMark() {
        auto option = OrvWaterMarkOption::option();
        auto star = OrvStickerLocalPackage::package()->stickerWithIdt(30202);
        OrvStickerLocalPackage::package()->loadStickerData(star);
        // The mark is not scaled to the photo, so it is given a small size of its own.
        const gfx::BitmapPtr& pixels = star->image()->bitmap();
        option->setMarkImage(gfx::Image::withBitmap(pixels, pixels->width() / 24.0));
        option->setMarkText("OrvViews 演示");
        option->setMarkTextSize(16);
        option->setMarkTextPadding(2);
        option->setMarkMargin(4);
        option->setMarkPosition(OrvWaterMarkOption::kBottomRight);
        return option;
    }

    static gfx::Point centreOnScreen(const ui::View& view) {
        return view.superview()->convertPointToView(view.center(), nullptr);
    }

    // The rotate-and-scale handle: on the picture's lower right corner.
    static gfx::Point handleOnScreen(const ui::View& view) {
        const gfx::Size size = view.bounds().size;
        return view.convertPointToView({size.width - 18, size.height - 18}, nullptr);
    }

    // A path from `from` that turns `degrees` clockwise about `center` while its distance from
    // it grows by `scale`.
    static std::vector<gfx::Point> arc(gfx::Point center, gfx::Point from, double degrees,
                                       double scale) {
        std::vector<gfx::Point> path;
        const double dx = from.x - center.x, dy = from.y - center.y;
        for (int i = 0; i <= 12; ++i) {
            const double t = i / 12.0, a = degrees * t * M_PI / 180, k = 1 + (scale - 1) * t;
            path.push_back({center.x + k * (dx * std::cos(a) - dy * std::sin(a)),
                            center.y + k * (dx * std::sin(a) + dy * std::cos(a))});
        }
        return path;
    }

    // The loading hub with its progress ring, half-way through the download.
    void shootDownload() {
        loop().runUntil([] { return OrvPopupProgress::sharedView()->progress() >= 0.4f; });
        loop().runFor(0.2);
        shoot("cloud-downloading");
    }

    // The hub's states, shown over the tool before the user finishes.
    void tourHub(orvdemo::PhotoDemoController& screen) {
        screen.showHubWithStatus("正在处理...");
        loop().runFor(0.3);
        shoot("hub-status");
        screen.showHubSuccessWithStatus("处理完成");
        loop().runFor(0.3);
        shoot("hub-success");
        screen.showHubErrorWithStatus("保存到相册失败");
        loop().runFor(0.3);
        shoot("hub-error");
        loop().runFor(5.0);
    }

    int report(const Run& run, const std::shared_ptr<OrvResult>& result,
               const std::shared_ptr<rt::Error>& error) {
        if (error) return fail(("the save failed: " + error->description()).c_str());
        if (!result) return fail("no result");
        if (run.saveToTemp) {
            if (!result->imagePath()) return fail("the result has no temporary file");
            const fs::path copy = out_ / ("result-" + run.name + ".jpg");
            fs::copy_file(*result->imagePath(), copy, fs::copy_options::overwrite_existing);
            std::printf("  saved to the temporary file %s (copied to %s)\n",
                        result->imagePath()->c_str(), copy.c_str());
        }
        if (run.saveToAlbum) {
            if (!result->imageAsset()) return fail("the result has no album photo");
            std::printf("  saved to the album as %s\n",
                        result->imageAsset()->localIdentifier().c_str());
        }
        return 0;
    }

    void tap(ui::View& view) {
        auto injector = ui::EventInjector::injectorForWindow(window_);
        const gfx::Rect frame = view.convertRectToView(view.bounds(), nullptr);
        injector->tap({gfx::rectGetMidX(frame), gfx::rectGetMidY(frame)});
    }

    void shoot(const std::string& name) {
        loop().runPending();
        const auto path = out_ / (std::to_string(++shots_) + "-" + name + ".png");
        if (ui::Renderer::writePNG(*window_, path.string())) {
            std::printf("  %s\n", path.c_str());
        } else {
            std::printf("  could not write %s\n", path.c_str());
            failed_ = true;
        }
    }

    static rt::RunLoop& loop() { return rt::RunLoop::main(); }
    int fail(const char* why) {
        std::fprintf(stderr, "demo failed: %s\n", why);
        return 1;
    }

    fs::path out_;
    std::shared_ptr<ui::Window> window_;
    std::shared_ptr<HomeController> home_;
    orvdemo::LoopbackHttpServer server_;
    int shots_ = 0;
    bool failed_ = false;
};

}  // namespace

int main(int argc, char** argv) {
    // A photo editor renders full-size temporaries on worker threads: they go back to the
    // system when freed instead of staying in the allocator's pools.
    orv::rt::Memory::returnLargeAllocationsAtOnce();
    fs::path out = "out";
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--out") == 0 && i + 1 < argc) out = argv[++i];
    }
    return Session(fs::absolute(out)).run();
}
