#pragma once

#include "ical/VTodoMapping.h"

#include <optional>

namespace tarnwell::sync {

// Two copies of one task that both changed since they last agreed (`base`,
// the copy both sides had after the last sync) become one, field by field:
// a field only one side changed takes that side's value; a field both
// changed takes the later edit (`localEdited` against the server copy's
// LAST-MODIFIED). Focused and discarded seconds never go backwards, so they
// take the larger count; and a completion is never undone by a copy that
// did not itself change it. Without a base (the same task met for the first
// time) every field counts as changed on both sides.
TodoFields mergeTodo(const std::optional<TodoFields> &base, const TodoFields &local, const QDateTime &localEdited,
                     const TodoFields &remote);

} // namespace tarnwell::sync
