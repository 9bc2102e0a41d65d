import { defineConfig } from '@playwright/test';
import { args, executablePath } from './tests/chromium.mjs';

export default defineConfig({
  testDir: 'tests/browser',
  outputDir: 'test-results',
  timeout: 60_000,
  expect: { timeout: 20_000 },
  workers: 2,
  fullyParallel: true,
  // The programs of the Windows build are tested alone: ./run test web windows.
  testMatch: process.env['CONTROLLER_WINDOWS_PROGRAMS'] ? '**/windows.spec.ts' : '**/*.spec.ts',
  testIgnore: process.env['CONTROLLER_WINDOWS_PROGRAMS'] ? [] : '**/windows.spec.ts',
  forbidOnly: true,
  reporter: 'line',
  use: {
    viewport: { width: 1280, height: 720 },
    locale: 'en-GB',
    timezoneId: 'UTC',
    launchOptions: { executablePath, args },
  },
});
