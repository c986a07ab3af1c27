// When the steps of a run took place, and the calls within them.
#pragma once

#include <string>

#include "jighost/records/RunRecord.h"
#include "jighost/report/Markup.h"

class Timeline {
  public:
    /// `id` is the section's.
    Timeline(const RUN_RECORD& record, const std::string& id);

    /// The moments, to stand above all lanes. Nothing of a record that has none.
    Markup Axis() const;
    /// A step with its attempts, and each call as a tick.
    Markup Lane(const RECORDED_STEP& step) const;

  private:
    double PlaceOf(double ms) const;
    Markup Bar(TAG opening, double start, double time) const;
    Markup Ticks(const RECORDED_ATTEMPT& attempt) const;

    std::string m_Grid;   // the name of the lines behind all lanes
    bool m_bMoments;      // else there is nothing to draw
    double m_Length = 1;  // in ms
};
