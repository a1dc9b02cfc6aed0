// The crop tool's result path as one command, so that the peer comparison times a whole process
// for us as it does for the peers' tools: read the JPEG at full size, turn it a quarter right
// and mirror it (as the tool's buttons do, by the orientation tag), crop the fractions of the
// turned picture the window showed, upright, and save a JPEG at 0.95 with the photo's EXIF.
//
//   orv_crop_cli IN.jpg OUT.jpg X Y W H      X, Y, W, H in fractions of the turned picture
#include <cstdio>
#include <cstdlib>

#include "frameworks/core/OrvImageExtension.h"
#include "frameworks/core/OrvTSFileManager.h"

int main(int argc, char** argv) {
    if (argc != 7) {
        std::fprintf(stderr, "usage: orv_crop_cli IN.jpg OUT.jpg X Y W H\n");
        return 2;
    }
    codec::ImageMetadata metadata;
    auto photo = orvImageWithContentsOfFileLimit(argv[1], 0, &metadata);
    if (!photo) return 1;
    auto turned = orvChangeMirrorHorizontal(orvChangeTurnRight(photo));
    const gfx::Rect cut{std::atof(argv[3]), std::atof(argv[4]), std::atof(argv[5]),
                        std::atof(argv[6])};
    auto cropped = orvImageCorpWithPrecentRect(turned, cut);
    const auto jpeg =
        orvJpegDataWithCompress(cropped, 0.95, orvMetadataMatchingImage(cropped, metadata));
    return !jpeg.empty() && OrvTSFileManager::writeDataAtomically(jpeg, argv[2]) ? 0 : 1;
}
