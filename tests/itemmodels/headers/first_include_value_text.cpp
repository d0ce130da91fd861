#include <itemmodels/value_text.h>
