#pragma once

namespace velmorand {

/// Returns when the X server has done all that the toolkit has asked of it so far. Waits without a bound, as the toolkit
/// does itself. The application object must exist.
void synchroniseToolkitConnection();

}  // namespace velmorand
