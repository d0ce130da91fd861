#include <session/recorded_rows.h>
