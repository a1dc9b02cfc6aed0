#pragma once
#include "orvviews/widgets/OrvResultOptions.h"

// Options of a screen that works on one input picture. Both fields start false.
class OrvImageResultOptions : public OrvResultOptions {
    ORV_DECLARE_CLASS(OrvImageResultOptions)
  public:
    // Show the result full-screen after processing instead of delivering it.
    bool showResultPreview() const { return showResultPreview_; }
    void setShowResultPreview(bool on) { showResultPreview_ = on; }
    // Delete the application's input file when the controller goes.
    bool isAutoRemoveTemp() const { return isAutoRemoveTemp_; }
    void setIsAutoRemoveTemp(bool on) { isAutoRemoveTemp_ = on; }

    std::shared_ptr<OrvComponentsViewController> componentInstance() override;

  private:
    bool showResultPreview_ = false;
    bool isAutoRemoveTemp_ = false;
};
