#pragma once
// What a running scenario works on: the simulated world, the program once
// `start` has made it, and the result of the last `call`.

#include <memory>
#include <stdexcept>
#include <string>

#include "forms/frmTessuma.h"
#include "forms/frmUpdate.h"
#include "forms/modMain.h"
#include "sim/World.h"

namespace scenario {

// What a command or a path needs before it can run. The checks before the
// run make sure that it is there.
enum class Needs {
    World,    // nothing but the world: allowed before `start`
    Program,  // the program made by `start`, even if Main refused to run
    Form,     // the loaded main form
};

class Runtime {
public:
    World world;
    std::unique_ptr<Program> program;
    std::string callResult;  // the CallResult path

    bool Started() const { return program != nullptr; }
    bool FormLoaded() const { return program && program->MainForm; }
    // The checks before the run make sure that the form is there; should the
    // program ever drop it, the run ends with an error instead of a crash.
    frmTessuma& Form() {
        if (!FormLoaded()) throw std::logic_error("the main form is not loaded");
        return *program->MainForm;
    }

    // frmUpdate as it stands for reading: the loaded form, or a form that has
    // never been loaded (all fields at their start values) while there is none.
    const frmUpdate& UpdateForReading();
    // frmUpdate for writing or calling: referring to the form loads it.
    frmUpdate& UpdateForWriting() { return program->UpdateFormInstance(); }

    // A path of the scenario (relative, with "/") as a path of the sandbox.
    std::string SandboxPath(const std::string& relative) const { return world.Path(relative); }

private:
    std::unique_ptr<frmUpdate> blankUpdate_;
};

}  // namespace scenario
