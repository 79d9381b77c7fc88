// Preloaded into udevd and udisksd on kernels without partition table support. Such a kernel removes every
// partition when a program requests a new scan. This library scans with partx instead.
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <linux/fs.h>
#include <linux/loop.h>
#include <spawn.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

static int run(char* option, char* device)
{
    char *arguments[] = {"partx", option, device, NULL}, *environment[] = {NULL};
    pid_t child;
    int status = -1;
    posix_spawn_file_actions_t quiet;
    posix_spawn_file_actions_init(&quiet);
    posix_spawn_file_actions_addopen(&quiet, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    if (posix_spawn(&child, "/usr/bin/partx", &quiet, NULL, arguments, environment) == 0)
        while (waitpid(child, &status, 0) < 0 && errno == EINTR)
            ;
    posix_spawn_file_actions_destroy(&quiet);
    return status;
}

static void scan(int fd)
{
    char link[32], device[256];
    snprintf(link, sizeof link, "/proc/self/fd/%d", fd);
    ssize_t length = readlink(link, device, sizeof device - 1);
    if (length <= 0)
        return;
    device[length] = 0;
    // partx -u fails on a disk without a table, and keeps the partitions. It does not add logical partitions.
    run(run("-u", device) == 0 ? "-a" : "-d", device);
}

int ioctl(int fd, unsigned long request, ...)
{
    va_list list;
    va_start(list, request);
    void* argument = va_arg(list, void*);
    va_end(list);
    static int (*real)(int, unsigned long, ...);
    if (real == NULL)
        real = (int (*)(int, unsigned long, ...))dlsym(RTLD_NEXT, "ioctl");
    if (request == BLKRRPART) {
        scan(fd);
        // udevd then announces the disk and its partitions itself. Others expect success.
        if (getenv("PARTITION_SCAN_BUSY") == NULL)
            return 0;
        errno = EBUSY;
        return -1;
    }
    const int result = real(fd, request, argument);
    const int set = request == LOOP_SET_STATUS64;
    if (result == 0 && set && (((struct loop_info64*)argument)->lo_flags & LO_FLAGS_PARTSCAN))
        scan(fd);
    return result;
}
