#pragma once

// The first steps of a run, before any window: version, hot keys, catalogue, the root
// with its collections. Each step is tried on its own; a failed step does not stop the
// others. Calling it again starts afresh.
void StartCore();
