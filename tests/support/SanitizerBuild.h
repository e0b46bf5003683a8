#pragma once

// 1 in a build whose sanitizer brings an allocator and a runtime of its own.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define CINDER_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define CINDER_SANITIZED 1
#endif
#endif
#ifndef CINDER_SANITIZED
#define CINDER_SANITIZED 0
#endif
