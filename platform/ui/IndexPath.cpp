#include "platform/ui/IndexPath.h"

#include <ostream>

namespace orv::ui {

std::ostream& operator<<(std::ostream& out, const IndexPath& path) {
    return out << '[' << path.section << ", " << path.row << ']';
}

}  // namespace orv::ui
