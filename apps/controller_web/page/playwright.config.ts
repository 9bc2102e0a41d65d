import { defineConfig } from '@playwright/test';

export default defineConfig({
  testDir: 'tests/browser',
  outputDir: 'test-results',
  timeout: 30_000,
  expect: { timeout: 10_000 },
  workers: 2,
  fullyParallel: true,
  forbidOnly: true,
  reporter: 'line',
  use: {
    viewport: { width: 1280, height: 720 },
    locale: 'en-GB',
    timezoneId: 'UTC',
    launchOptions: {
      executablePath: process.env['CHROMIUM'] ?? '/usr/lib/chromium/chromium-headless-shell',
      args: ['--no-sandbox', '--disable-quic', '--no-first-run', '--disable-background-networking', '--disable-dev-shm-usage', '--font-render-hinting=none'],
    },
  },
});
