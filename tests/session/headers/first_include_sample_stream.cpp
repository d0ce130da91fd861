#include <session/sample_stream.h>
