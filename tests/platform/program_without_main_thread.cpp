// A program that runs on in a second thread after its main thread has ended.

#include <pthread.h>
#include <unistd.h>

#include <thread>

int main() {
    std::thread(::pause).detach();
    ::pthread_exit(nullptr);
}
