#pragma once
#include "orvviews/widgets/OrvResultViewController.h"

// The base of screens that work on one input picture. It receives the preview and clean-up
// options of its option set; loading the input builds on these fields.
class OrvImageResultController : public OrvResultViewController {
    ORV_DECLARE_CLASS(OrvImageResultController)
  public:
    bool showResultPreview() const { return showResultPreview_; }
    void setShowResultPreview(bool on) { showResultPreview_ = on; }
    bool isAutoRemoveTemp() const { return isAutoRemoveTemp_; }
    void setIsAutoRemoveTemp(bool on) { isAutoRemoveTemp_ = on; }

  private:
    bool showResultPreview_ = false;
    bool isAutoRemoveTemp_ = false;
};
