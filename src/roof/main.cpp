// The process: what is opened before what, the run, and the close-down.
#include "roof/driver.h"
#include "roof/startup.h"
#include "run/stops.h"

int main(int count, char** arguments) {
  tidearc::start_process(count > 1 ? arguments[1] : "");
  tidearc::DRIVER();
  tidearc::CLOSUP();
}
