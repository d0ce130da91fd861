#include <robotconnection/memory_interface.h>
