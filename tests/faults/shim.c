// Loaded into the program under test (LD_PRELOAD), makes its disk and its clock misbehave on demand.
//
//   VELMO_FAULTS         a file of one `struct Orders`, mapped, so that orders change while the program runs
//   VELMO_FAULTS_FOLDER  only files below it are concerned
//
// Calls that the orders do not concern go straight through.

#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <stdarg.h>
#include <stdatomic.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/time.h>
#include <sys/types.h>
#include <time.h>
#include <unistd.h>

enum Mode { kNone = 0, kFail = 1, kShort = 2, kSlow = 3, kStall = 4 };

struct Orders {
    int32_t mode;
    int32_t error;        // errno of kFail
    int32_t every;        // every nth call that is concerned
    int32_t times;        // how often it happens at most; 0 for ever
    int32_t milliseconds; // of kSlow and kStall
    int32_t reserved;
    int64_t clockJump;    // seconds added to CLOCK_REALTIME
    atomic_int done;      // how often it has happened
    atomic_int calls;     // that were concerned
    char part[128];       // of the path; empty for any
};

static struct Orders* orders(void) {
    static struct Orders* mapped;
    static atomic_int tried;
    if (!atomic_exchange(&tried, 1)) {
        const char* file = getenv("VELMO_FAULTS");
        const int descriptor = file != NULL ? open(file, O_RDWR | O_CLOEXEC) : -1;
        void* place = descriptor < 0 ? MAP_FAILED
                                     : mmap(NULL, sizeof(struct Orders), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
        if (descriptor >= 0) {
            close(descriptor);
        }
        mapped = place == MAP_FAILED ? NULL : place;
    }
    return mapped;
}

static int concernsPath(const struct Orders* now, const char* path) {
    static const char* folder;
    if (folder == NULL) {
        folder = getenv("VELMO_FAULTS_FOLDER");
    }
    return folder != NULL && strncmp(path, folder, strlen(folder)) == 0 &&
           (now->part[0] == '\0' || strstr(path, now->part) != NULL);
}

static int concerns(const struct Orders* now, int descriptor) {
    char link[64];
    char path[PATH_MAX];
    snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    const ssize_t length = readlink(link, path, sizeof path - 1);
    if (length <= 0) {
        return 0;
    }
    path[length] = '\0';
    return concernsPath(now, path);
}

static void wait(int milliseconds) {
    const struct timespec time = {milliseconds / 1000, milliseconds % 1000 * 1000000L};
    nanosleep(&time, NULL);
}

// What is to happen to a call that is concerned: 0 nothing more, 1 it fails with errno set, 2 it does half.
static int strike(struct Orders* now) {
    const int call = atomic_fetch_add(&now->calls, 1) + 1;
    if (now->every > 1 && call % now->every != 0) {
        return 0;
    }
    if (now->times > 0 && atomic_fetch_add(&now->done, 1) >= now->times) {
        return 0;
    }
    switch (now->mode) {
    case kFail:
        errno = now->error;
        return 1;
    case kShort:
        return 2;
    default:
        wait(now->milliseconds);
        return 0;
    }
}

static int struck(int descriptor) {
    struct Orders* now = orders();
    if (now == NULL || now->mode == kNone) {
        return 0;
    }
    const int before = errno;
    if (!concerns(now, descriptor)) {
        errno = before;
        return 0;
    }
    errno = before;
    return strike(now);
}

static int struckPath(const char* path) {
    struct Orders* now = orders();
    return now == NULL || now->mode == kNone || !concernsPath(now, path) ? 0 : strike(now);
}

#define REAL(name) \
    static __typeof__(&name) real; \
    if (real == NULL) { \
        real = (__typeof__(&name))dlsym(RTLD_NEXT, #name); \
    }

#define HALF(count) ((count) > 1 ? (count) / 2 : (count))

ssize_t write(int descriptor, const void* data, size_t count) {
    REAL(write)
    const int fate = struck(descriptor);
    return fate == 1 ? -1 : real(descriptor, data, fate == 2 ? HALF(count) : count);
}

ssize_t pwrite(int descriptor, const void* data, size_t count, off_t offset) {
    REAL(pwrite)
    const int fate = struck(descriptor);
    return fate == 1 ? -1 : real(descriptor, data, fate == 2 ? HALF(count) : count, offset);
}

ssize_t pwrite64(int descriptor, const void* data, size_t count, off64_t offset) {
    REAL(pwrite64)
    const int fate = struck(descriptor);
    return fate == 1 ? -1 : real(descriptor, data, fate == 2 ? HALF(count) : count, offset);
}

int fsync(int descriptor) {
    REAL(fsync)
    return struck(descriptor) == 1 ? -1 : real(descriptor);
}

int fdatasync(int descriptor) {
    REAL(fdatasync)
    return struck(descriptor) == 1 ? -1 : real(descriptor);
}

int ftruncate(int descriptor, off_t length) {
    REAL(ftruncate)
    return struck(descriptor) == 1 ? -1 : real(descriptor, length);
}

int fallocate(int descriptor, int mode, off_t offset, off_t length) {
    REAL(fallocate)
    return struck(descriptor) == 1 ? -1 : real(descriptor, mode, offset, length);
}

int rename(const char* from, const char* to) {
    REAL(rename)
    return struckPath(from) == 1 ? -1 : real(from, to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) {
    REAL(renameat2)
    return struckPath(from) == 1 ? -1 : real(fromFolder, from, toFolder, to, flags);
}

int clock_gettime(clockid_t clock, struct timespec* time) {
    REAL(clock_gettime)
    const int result = real(clock, time);
    const struct Orders* now = clock == CLOCK_REALTIME ? orders() : NULL;
    if (result == 0 && now != NULL) {
        time->tv_sec += now->clockJump;
    }
    return result;
}
