// The world and program of one scenario run.
#include "sim/Runtime.h"

namespace scenario {

const frmUpdate& Runtime::UpdateForReading() {
    if (program->UpdateForm) return *program->UpdateForm;
    if (!blankUpdate_) blankUpdate_ = std::make_unique<frmUpdate>(*program);
    return *blankUpdate_;
}

}  // namespace scenario
