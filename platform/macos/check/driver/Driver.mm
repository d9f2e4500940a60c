// Lets a test be the person in front of the program, and over GNUstep also the system around it and the
// clock.
//
// The test and the program share a socket, whose number is in KELPA_TEST_SOCKET. A line asks for one thing,
// as an object of JSON whose "do" says what; another line answers, with what was asked for in "answer" or
// with what is wrong in "error". Before it answers, all that follows from the command has been done. Over
// GNUstep nothing happens by itself in between, and time passes only by "pass".
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
#include <cstdlib>
#include <exception>

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

void serve() {
    driver::pass(0);
    FILE* stream = fdopen(std::atoi(std::getenv("KELPA_TEST_SOCKET")), "r+");
    char* line = nullptr;
    std::size_t room = 0;
    for (ssize_t length; (length = getline(&line, &room, stream)) > 0;) {
        @autoreleasepool {
            NSData* asked = [NSData dataWithBytes:line length:static_cast<NSUInteger>(length)];
            NSDictionary* answer = answerTo(asked);
            driver::pass(0);
            NSData* text = [NSJSONSerialization dataWithJSONObject:answer options:0 error:nullptr];
            std::fwrite([text bytes], 1, [text length], stream);
            std::fputc('\n', stream);
            std::fflush(stream);
        }
    }
    [NSApp terminate:nil]; // the test is over
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
    if (std::getenv("KELPA_TEST_SOCKET"))
        [self performSelector:@selector(serve) withObject:nil afterDelay:0];
}

+ (void)serve {
    ::serve();
}

+ (id)pass:(NSDictionary*)asked {
    driver::pass([asked[@"seconds"] doubleValue]);
    return nil;
}

+ (id)startAgain:(NSDictionary*)asked {
    return @([[NSApp delegate] applicationShouldHandleReopen:NSApp hasVisibleWindows:NO]);
}

/// Reads what is stored, or stores a value as another program does. Of the types only truth values are told
/// apart from numbers.
+ (id)defaults:(NSDictionary*)asked {
    NSUserDefaults* defaults = [NSUserDefaults standardUserDefaults];
    if (id value = asked[@"value"])
        [defaults setObject:value forKey:asked[@"key"]];
    return [defaults objectForKey:asked[@"key"]];
}

@end
