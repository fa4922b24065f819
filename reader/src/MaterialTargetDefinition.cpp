#include <citygml/MaterialTargetDefinition.h>
