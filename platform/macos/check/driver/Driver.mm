// Lets a test be the person in front of the program, and over GNUstep also the system around it and the
// clock.
//
// The program's standard input is a socket that it shares with the test. A line asks for one thing, as an
// object of JSON whose "do" says what; another line answers, with what was asked for in "answer" or with what
// is wrong in "error". Before it answers, all that follows from the command has been done. Over GNUstep
// nothing happens by itself in between, and time passes only by "pass".
//
// A test is a class of macos_support.MacTest, in a file tests/macos/NAME_test.py of one subject:
//
//     class Launch(MacTest):
//         def test_the_menu_bar_shows_the_time(self):
//             program = self.launch({"pref.work.time": 25})
//             program.pass_time(1)
//             self.assertEqual(program.title(), "24:59")
//
// `MacTest` and `Program` in macos_support.py have a method for each command; what is done to a view names
// the view by what a person would see or hear of it.
#import "platform/macos/check/driver/Commands.h"

#include <cstdio>
#include <exception>
#include <iostream>
#include <string>
#include <unistd.h>

namespace {

/// An exception ends the test, not the program.
NSDictionary* answerTo(NSData* line) {
    try {
        NSDictionary* asked = [NSJSONSerialization JSONObjectWithData:line options:0 error:nullptr];
        const SEL command = NSSelectorFromString([asked[@"do"] stringByAppendingString:@":"]);
        const auto method = reinterpret_cast<void*>([Driver methodForSelector:command]);
        id answer = reinterpret_cast<id (*)(Class, SEL, id)>(method)([Driver class], command, asked);
        return @{@"answer" : answer ? answer : [NSNull null]};
    } catch (const std::exception& refusal) {
        return @{@"error" : @(refusal.what())};
    } catch (...) {
        return @{@"error" : @"An exception of the system's, which stands in what the program said"};
    }
}

} // namespace

@implementation Driver

/// Starts to listen once the program has launched.
+ (void)load {
    [[NSNotificationCenter defaultCenter] addObserver:self
                                             selector:@selector(launched:)
                                                 name:NSApplicationDidFinishLaunchingNotification
                                               object:nil];
}

+ (void)launched:(NSNotification*)notification {
    [self performSelectorOnMainThread:@selector(serve) withObject:nil waitUntilDone:NO];
}

+ (void)serve {
    driver::pass(0);
    for (std::string line; std::getline(std::cin, line);)
        @autoreleasepool {
            NSDictionary* answer = answerTo([NSData dataWithBytes:line.data() length:line.size()]);
            driver::pass(0);
            NSData* text = [NSJSONSerialization dataWithJSONObject:answer options:0 error:nullptr];
            dprintf(STDIN_FILENO, "%.*s\n", static_cast<int>([text length]),
                    static_cast<const char*>([text bytes]));
        }
    [NSApp terminate:nil]; // the test is over
}

+ (id)pass:(NSDictionary*)asked {
    driver::pass([asked[@"seconds"] doubleValue]);
    return nil;
}

+ (id)startAgain:(NSDictionary*)asked {
    return @([[NSApp delegate] applicationShouldHandleReopen:NSApp hasVisibleWindows:NO]);
}

@end

void driver::dealWithEvents(NSDate* end) {
    while (NSEvent* event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                               untilDate:end
                                                  inMode:NSDefaultRunLoopMode
                                                 dequeue:YES])
        [NSApp sendEvent:event];
}
