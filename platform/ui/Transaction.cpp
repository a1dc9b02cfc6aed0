#include "platform/ui/Transaction.h"

#include <vector>

namespace orv::ui {

ORV_DEFINE_CLASS(Transaction, rt::Object)

namespace {

struct Settings {
    bool disableActions = false;
    double animationDuration = 0.25;
};

// The innermost open transaction is at the back; the bottom entry stands for "none open".
std::vector<Settings>& stack() {
    static std::vector<Settings> s(1);
    return s;
}

}  // namespace

void Transaction::begin() {
    stack().push_back(stack().back());
}

void Transaction::commit() {
    if (stack().size() > 1) stack().pop_back();
}

void Transaction::setDisableActions(bool disable) {
    stack().back().disableActions = disable;
}

bool Transaction::disableActions() {
    return stack().back().disableActions;
}

void Transaction::setAnimationDuration(double seconds) {
    stack().back().animationDuration = seconds;
}

double Transaction::animationDuration() {
    return stack().back().animationDuration;
}

}  // namespace orv::ui
