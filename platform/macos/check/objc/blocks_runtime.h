#pragma once

extern "C" {
void* _Block_copy(const void* block);
void _Block_release(const void* block);
}
