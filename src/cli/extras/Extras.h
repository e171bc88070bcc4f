#pragma once

// The entry points of the command line's on-demand module, looked up by name.
#define TARNWELL_EXTRAS_LINK "tarnwell_extras_agent_link"
#define TARNWELL_EXTRAS_ICS "tarnwell_extras_write_ics"
