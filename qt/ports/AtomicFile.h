#pragma once
// Replacing a file so that it is always either the old file, untouched, or
// the whole new one: the data goes to a temporary file in the same folder,
// is flushed to the disk and renamed over the target. A link is followed to
// the file it names; the old file's permissions are kept. Temporaries that
// an earlier save left behind when its process was killed are removed.

#include <string>

// False when anything failed; the temporary is gone then and the old file
// is as it was.
bool WriteFileAtomically(const std::string& path, const std::string& data);
